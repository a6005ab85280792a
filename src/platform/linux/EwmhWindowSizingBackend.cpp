#include "EwmhWindowSizingBackend.h"

#include <xcb/xcb_icccm.h>

#include <algorithm>
#include <cmath>

namespace zd::x11 {

namespace {

// _NET_MOVERESIZE_WINDOW's first word: gravity, which fields count, who asks.
constexpr std::uint32_t kStaticGravity = 10;
constexpr std::uint32_t kHasX = 1u << 8;
constexpr std::uint32_t kHasY = 1u << 9;
constexpr std::uint32_t kHasWidth = 1u << 10;
constexpr std::uint32_t kHasHeight = 1u << 11;
constexpr std::uint32_t kFromPager = 2u << 12;  // window managers honour tools, not only apps

std::uint32_t toCardinal(double v) {
    return static_cast<std::uint32_t>(static_cast<std::int32_t>(std::lround(v)));
}

}  // namespace

std::optional<SizableWindow> EwmhWindowSizingBackend::mainWindow(std::int32_t pid) {
    auto active = connection_->cardinal(connection_->root(), connection_->atoms().netActiveWindow,
                                        XCB_ATOM_WINDOW);
    if (!active || *active == XCB_WINDOW_NONE)
        return std::nullopt;
    ClientWindow client = clients_.describe(*active);
    if (client.pid != pid || client.layer != Layer::normal || !client.bounds)
        return std::nullopt;
    return SizableWindow{client.id};
}

std::vector<SizableWindow> EwmhWindowSizingBackend::windows(std::int32_t pid) {
    std::vector<SizableWindow> result;
    for (const auto& client : clients_.clients()) {
        if (client.pid == pid && client.layer == Layer::normal)
            result.push_back({client.id});
    }
    return result;
}

Size EwmhWindowSizingBackend::allowedSize(xcb_window_t window, Size size) const {
    xcb_size_hints_t hints{};
    xcb_connection_t* c = connection_->get();
    if (!xcb_icccm_get_wm_normal_hints_reply(c, xcb_icccm_get_wm_normal_hints(c, window), &hints,
                                             nullptr)) {
        return size;
    }
    if (hints.flags & XCB_ICCCM_SIZE_HINT_P_MAX_SIZE) {
        if (hints.max_width > 0)
            size.width = std::min(size.width, double(hints.max_width));
        if (hints.max_height > 0)
            size.height = std::min(size.height, double(hints.max_height));
    }
    if (hints.flags & XCB_ICCCM_SIZE_HINT_P_MIN_SIZE) {
        size.width = std::max(size.width, double(hints.min_width));
        size.height = std::max(size.height, double(hints.min_height));
    }
    return size;
}

Rect EwmhWindowSizingBackend::clientRectFor(xcb_window_t window, Rect visible) const {
    // Sizes and positions speak of what the user sees (the frame, title bar included; a
    // client-side decoration without its shadow); the window manager is told the client's.
    const double scale = connection_->scale();
    Rect pixels{visible.x * scale, visible.y * scale, visible.width * scale,
                visible.height * scale};
    const Extents shadow = clients_.shadowExtents(window);
    if (shadow.left + shadow.right + shadow.top + shadow.bottom > 0) {
        return Rect{pixels.x - shadow.left, pixels.y - shadow.top,
                    pixels.width + shadow.left + shadow.right,
                    pixels.height + shadow.top + shadow.bottom};
    }
    const Extents frame = clients_.frameExtents(window);
    return Rect{pixels.x + frame.left, pixels.y + frame.top,
                pixels.width - frame.left - frame.right, pixels.height - frame.top - frame.bottom};
}

bool EwmhWindowSizingBackend::setSize(SizableWindow window, Size size) {
    const auto id = static_cast<xcb_window_t>(window.handle);
    if (!connection_->rootGeometry(id))
        return false;
    const Rect client = clientRectFor(id, Rect{0, 0, size.width, size.height});
    Size allowed = allowedSize(id, {client.width, client.height});
    const std::uint32_t data[5] = {kStaticGravity | kHasWidth | kHasHeight | kFromPager, 0, 0,
                                   toCardinal(allowed.width), toCardinal(allowed.height)};
    connection_->sendToRoot(id, connection_->atoms().netMoveresizeWindow, data);
    return true;
}

bool EwmhWindowSizingBackend::setPosition(SizableWindow window, Point topLeft) {
    const auto id = static_cast<xcb_window_t>(window.handle);
    if (!connection_->rootGeometry(id))
        return false;
    const Rect client = clientRectFor(id, Rect{topLeft.x, topLeft.y, 0, 0});
    const std::uint32_t data[5] = {kStaticGravity | kHasX | kHasY | kFromPager,
                                   toCardinal(client.x), toCardinal(client.y), 0, 0};
    connection_->sendToRoot(id, connection_->atoms().netMoveresizeWindow, data);
    return true;
}

}  // namespace zd::x11
