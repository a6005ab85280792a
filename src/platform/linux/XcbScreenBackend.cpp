#include "XcbScreenBackend.h"

namespace zd::x11 {

std::optional<ScreenInfo> XcbScreenBackend::mainScreen() const {
    const xcb_screen_t* screen = connection_->screen();
    if (!screen)
        return std::nullopt;
    // X counts pixels; the core counts points, pixels over the desktop's scale.
    const double scale = connection_->scale();
    ScreenInfo info;
    info.frame = Rect{0, 0, screen->width_in_pixels / scale, screen->height_in_pixels / scale};
    info.visibleFrame = info.frame;
    const auto& atoms = connection_->atoms();
    auto area = connection_->cardinals(connection_->root(), atoms.netWorkarea, XCB_ATOM_CARDINAL);
    // Four numbers per desktop; the current desktop's.
    const std::size_t desktop =
        connection_->cardinal(connection_->root(), atoms.netCurrentDesktop).value_or(0);
    if (area && area->size() >= (desktop + 1) * 4) {
        const auto* a = area->data() + desktop * 4;
        Rect work{a[0] / scale, a[1] / scale, a[2] / scale, a[3] / scale};
        if (work.width > 0 && work.height > 0)
            info.visibleFrame = work;
    }
    info.backingScaleFactor = scale;
    return info;
}

}  // namespace zd::x11
