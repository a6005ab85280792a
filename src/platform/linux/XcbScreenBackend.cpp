#include "XcbScreenBackend.h"

#include <algorithm>

namespace zd::x11 {

namespace {

Rect intersection(const Rect& a, const Rect& b) {
    const double x = std::max(a.x, b.x);
    const double y = std::max(a.y, b.y);
    const double right = std::min(a.maxX(), b.maxX());
    const double bottom = std::min(a.maxY(), b.maxY());
    if (right <= x || bottom <= y)
        return Rect{};
    return Rect{x, y, right - x, bottom - y};
}

}  // namespace

std::optional<ScreenInfo> XcbScreenBackend::screenOf(const Rect& monitor) const {
    // X counts pixels; the core counts points, pixels over the desktop's scale.
    const double scale = connection_->scale();
    Rect visible = monitor;
    const auto& atoms = connection_->atoms();
    auto area = connection_->cardinals(connection_->root(), atoms.netWorkarea, XCB_ATOM_CARDINAL);
    // Four numbers per desktop; the current desktop's. The work area spans all monitors.
    const std::size_t desktop =
        connection_->cardinal(connection_->root(), atoms.netCurrentDesktop).value_or(0);
    if (area && area->size() >= (desktop + 1) * 4) {
        const auto* a = area->data() + desktop * 4;
        const Rect work =
            intersection(monitor, Rect{double(a[0]), double(a[1]), double(a[2]), double(a[3])});
        if (work.width > 0 && work.height > 0)
            visible = work;
    }
    auto points = [scale](const Rect& r) {
        return Rect{r.x / scale, r.y / scale, r.width / scale, r.height / scale};
    };
    return ScreenInfo{points(monitor), points(visible), scale};
}

std::optional<ScreenInfo> XcbScreenBackend::mainScreen() const {
    if (!connection_->screen())
        return std::nullopt;
    const auto monitors = connection_->monitors();
    // The screen with the focus: the monitor under the middle of the active window.
    auto active = connection_->cardinal(connection_->root(), connection_->atoms().netActiveWindow,
                                        XCB_ATOM_WINDOW);
    if (active && *active != XCB_WINDOW_NONE) {
        if (auto seen = clients_.footprint(*active)) {
            const double x = seen->visible.midX();
            const double y = seen->visible.midY();
            for (const auto& m : monitors) {
                if (x >= m.frame.x && x < m.frame.maxX() && y >= m.frame.y && y < m.frame.maxY())
                    return screenOf(m.frame);
            }
        }
    }
    return screenOf(monitors.front().frame);
}

std::optional<ScreenInfo> XcbScreenBackend::primaryScreen() const {
    if (!connection_->screen())
        return std::nullopt;
    return screenOf(connection_->monitors().front().frame);
}

}  // namespace zd::x11
