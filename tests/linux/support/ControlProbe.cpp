#include "ControlProbe.h"

#include <cstdlib>

#include "SessionFixture.h"
#include "linux/EwmhClients.h"
#include "linux/XcbConnection.h"

namespace zd::testing {

using x11::XcbConnection;
using x11::XcbReply;

std::vector<ProbedWindow> probeWindows() {
    std::vector<ProbedWindow> windows;
    auto opened = XcbConnection::open();
    if (!opened)
        return windows;
    const XcbConnection& x = **opened;
    const auto stack = x.cardinals(x.root(), x.atoms().netClientListStacking, XCB_ATOM_WINDOW)
                           .value_or(std::vector<std::uint32_t>{});
    for (auto it = stack.rbegin(); it != stack.rend(); ++it) {  // topmost first
        ProbedWindow window;
        window.id = *it;
        window.pid = static_cast<std::int32_t>(x.cardinal(*it, x.atoms().netWmPid).value_or(0));
        window.title = x.bytes(*it, x.atoms().netWmName).value_or("");
        window.frame = x.rootGeometry(*it).value_or(Rect{});
        XcbReply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
            x.get(), xcb_get_window_attributes(x.get(), *it), nullptr));
        window.viewable = attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
        windows.push_back(window);
    }
    return windows;
}

std::uint32_t firstWindowOf(std::int32_t pid) {
    auto opened = XcbConnection::open();
    if (!opened)
        return 0;
    const x11::EwmhClients clients(*opened);
    std::uint32_t found = 0;
    waitFor([&] {
        for (const auto& c : clients.clients()) {
            if (c.pid == pid && c.layer == x11::Layer::normal && c.bounds &&
                c.bounds->width > 100) {
                found = c.id;
                return true;
            }
        }
        return false;
    });
    return found;
}

std::int32_t activeWindowPid() {
    auto opened = XcbConnection::open();
    if (!opened)
        return 0;
    const XcbConnection& x = **opened;
    const auto active = x.cardinal(x.root(), x.atoms().netActiveWindow, XCB_ATOM_WINDOW);
    const auto pid = active ? x.cardinal(*active, x.atoms().netWmPid) : std::nullopt;
    return static_cast<std::int32_t>(pid.value_or(0));
}

std::uint32_t atom(const std::string& name) {
    auto opened = XcbConnection::open();
    if (!opened)
        return XCB_ATOM_NONE;
    xcb_connection_t* c = (*opened)->get();
    XcbReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        c, xcb_intern_atom(c, 0, static_cast<std::uint16_t>(name.size()), name.data()), nullptr));
    return reply ? reply->atom : std::uint32_t{XCB_ATOM_NONE};
}

Image rootPixels(const Rect& r) {
    auto opened = XcbConnection::open();
    if (!opened || r.isEmpty())
        return Image();
    const XcbConnection& x = **opened;
    XcbReply<xcb_get_image_reply_t> reply(xcb_get_image_reply(
        x.get(),
        xcb_get_image(x.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, x.root(), static_cast<std::int16_t>(r.x),
                      static_cast<std::int16_t>(r.y), static_cast<std::uint16_t>(r.width),
                      static_cast<std::uint16_t>(r.height), ~0u),
        nullptr));
    if (!reply || reply->depth < 24)
        return Image();
    const auto* data = reinterpret_cast<const std::uint32_t*>(xcb_get_image_data(reply.get()));
    std::vector<std::uint32_t> argb(data, data + static_cast<std::size_t>(r.width * r.height));
    for (auto& p : argb)
        p |= 0xff000000u;
    return Image(static_cast<int>(r.width), static_cast<int>(r.height), std::move(argb));
}

double meanLuminance(const Image& image) {
    double sum = 0;
    for (std::uint32_t p : image.pixels())
        sum += 0.2126 * Image::redOf(p) + 0.7152 * Image::greenOf(p) + 0.0722 * Image::blueOf(p);
    return image.pixels().empty() ? -1 : sum / static_cast<double>(image.pixels().size());
}

double differingShare(const Image& a, const Image& b, int tolerance) {
    if (a.width() != b.width() || a.height() != b.height() || a.isNull())
        return 1.0;
    std::size_t differing = 0;
    for (std::size_t i = 0; i < a.pixels().size(); ++i) {
        for (int shift = 0; shift < 24; shift += 8) {
            const int d = static_cast<int>((a.pixels()[i] >> shift) & 0xff) -
                          static_cast<int>((b.pixels()[i] >> shift) & 0xff);
            if (std::abs(d) > tolerance) {
                ++differing;
                break;
            }
        }
    }
    return static_cast<double>(differing) / static_cast<double>(a.pixels().size());
}

}  // namespace zd::testing
