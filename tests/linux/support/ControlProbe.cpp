#include "ControlProbe.h"

#include <xcb/xcb.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <thread>

namespace zd::testing {

namespace {

template <class T>
using Reply = std::unique_ptr<T, decltype(&std::free)>;

struct Connection {
    xcb_connection_t* c = nullptr;
    xcb_window_t root = 0;
    Connection() {
        int screen = 0;
        c = xcb_connect(nullptr, &screen);
        if (xcb_connection_has_error(c))
            return;
        auto it = xcb_setup_roots_iterator(xcb_get_setup(c));
        for (int i = 0; i < screen; ++i)
            xcb_screen_next(&it);
        root = it.data->root;
    }
    ~Connection() { xcb_disconnect(c); }
    bool ok() const { return root != 0; }

    xcb_atom_t atom(const char* name) const {
        Reply<xcb_intern_atom_reply_t> r(
            xcb_intern_atom_reply(
                c, xcb_intern_atom(c, 0, static_cast<std::uint16_t>(std::strlen(name)), name),
                nullptr),
            &std::free);
        return r ? r->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
    }
    std::string property(xcb_window_t w, xcb_atom_t name, xcb_atom_t type) const {
        Reply<xcb_get_property_reply_t> r(
            xcb_get_property_reply(c, xcb_get_property(c, 0, w, name, type, 0, 4096), nullptr),
            &std::free);
        if (!r)
            return {};
        return std::string(static_cast<const char*>(xcb_get_property_value(r.get())),
                           static_cast<std::size_t>(xcb_get_property_value_length(r.get())));
    }
};

}  // namespace

std::vector<ProbedWindow> probeWindows() {
    std::vector<ProbedWindow> windows;
    Connection x;
    if (!x.ok())
        return windows;
    const std::string list =
        x.property(x.root, x.atom("_NET_CLIENT_LIST_STACKING"), XCB_ATOM_WINDOW);
    const xcb_atom_t pidAtom = x.atom("_NET_WM_PID");
    const xcb_atom_t nameAtom = x.atom("_NET_WM_NAME");
    const xcb_atom_t utf8 = x.atom("UTF8_STRING");
    for (std::size_t i = list.size() / 4; i-- > 0;) {  // topmost first
        xcb_window_t w = 0;
        std::memcpy(&w, list.data() + i * 4, 4);
        ProbedWindow window;
        window.id = w;
        const std::string pid = x.property(w, pidAtom, XCB_ATOM_CARDINAL);
        if (pid.size() == 4)
            std::memcpy(&window.pid, pid.data(), 4);
        window.title = x.property(w, nameAtom, utf8);
        Reply<xcb_get_geometry_reply_t> geometry(
            xcb_get_geometry_reply(x.c, xcb_get_geometry(x.c, w), nullptr), &std::free);
        Reply<xcb_translate_coordinates_reply_t> origin(
            xcb_translate_coordinates_reply(x.c, xcb_translate_coordinates(x.c, w, x.root, 0, 0),
                                            nullptr),
            &std::free);
        if (geometry && origin) {
            window.frame =
                Rect{static_cast<double>(origin->dst_x), static_cast<double>(origin->dst_y),
                     static_cast<double>(geometry->width), static_cast<double>(geometry->height)};
        }
        Reply<xcb_get_window_attributes_reply_t> attributes(
            xcb_get_window_attributes_reply(x.c, xcb_get_window_attributes(x.c, w), nullptr),
            &std::free);
        window.viewable = attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
        windows.push_back(window);
    }
    return windows;
}

Value ProbeWindowList::windowList(WindowListOption option) const {
    const bool onScreenOnly = (static_cast<std::uint32_t>(option) & 1u) != 0;
    ValueArray records;
    for (const auto& w : probeWindows()) {
        if (onScreenOnly && !w.viewable)
            continue;
        records.push_back(ValueDictionary{
            {WindowKey::number, static_cast<std::int64_t>(w.id)},
            {WindowKey::layer, 0},
            {WindowKey::ownerPID, w.pid},
            {WindowKey::ownerName, "app"},
            {WindowKey::name, w.title},
            {WindowKey::bounds, ValueDictionary{{"X", w.frame.x},
                                                {"Y", w.frame.y},
                                                {"Width", w.frame.width},
                                                {"Height", w.frame.height}}},
        });
    }
    return records;
}

std::optional<double> meanLuminance(const Rect& area) {
    Connection x;
    if (!x.ok() || area.isEmpty())
        return std::nullopt;
    Reply<xcb_get_image_reply_t> image(
        xcb_get_image_reply(
            x.c,
            xcb_get_image(x.c, XCB_IMAGE_FORMAT_Z_PIXMAP, x.root, static_cast<std::int16_t>(area.x),
                          static_cast<std::int16_t>(area.y), static_cast<std::uint16_t>(area.width),
                          static_cast<std::uint16_t>(area.height), ~0u),
            nullptr),
        &std::free);
    if (!image || image->depth < 24)
        return std::nullopt;
    const auto* data = xcb_get_image_data(image.get());
    const int length = xcb_get_image_data_length(image.get());
    double sum = 0;
    int count = 0;
    for (int i = 0; i + 3 < length; i += 4) {  // B, G, R, X
        sum += 0.0722 * data[i] + 0.7152 * data[i + 1] + 0.2126 * data[i + 2];
        ++count;
    }
    if (count == 0)
        return std::nullopt;
    return sum / count;
}

bool followRealTime(ManualClock& clock, const std::function<bool()>& done,
                    std::chrono::milliseconds limit) {
    using namespace std::chrono_literals;
    const auto start = std::chrono::steady_clock::now();
    while (!done()) {
        if (std::chrono::steady_clock::now() - start > limit)
            return false;
        std::this_thread::sleep_for(20ms);
        clock.advance(20ms);
    }
    return true;
}

}  // namespace zd::testing
