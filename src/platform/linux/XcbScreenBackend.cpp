#include "XcbScreenBackend.h"

namespace zd::x11 {

std::optional<ScreenInfo> XcbScreenBackend::mainScreen() const {
    const xcb_screen_t* screen = connection_->screen();
    if (!screen)
        return std::nullopt;
    ScreenInfo info;
    info.frame = Rect{0, 0, static_cast<double>(screen->width_in_pixels),
                      static_cast<double>(screen->height_in_pixels)};
    info.visibleFrame = info.frame;
    const auto& atoms = connection_->atoms();
    auto area = connection_->cardinals(connection_->root(), atoms.netWorkarea, XCB_ATOM_CARDINAL);
    // Four numbers per desktop; the current desktop's.
    const std::size_t desktop =
        connection_->cardinal(connection_->root(), atoms.netCurrentDesktop).value_or(0);
    if (area && area->size() >= (desktop + 1) * 4) {
        const auto* a = area->data() + desktop * 4;
        Rect work{static_cast<double>(a[0]), static_cast<double>(a[1]), static_cast<double>(a[2]),
                  static_cast<double>(a[3])};
        if (work.width > 0 && work.height > 0)
            info.visibleFrame = work;
    }
    info.backingScaleFactor = 1.0;
    return info;
}

}  // namespace zd::x11
