#include "capture/WindowResizer.h"

#include <algorithm>

#include "env/Environment.h"

namespace zd::WindowResizer {

std::optional<Size> factors(WindowSizePreset preset) {
    switch (preset) {
        case WindowSizePreset::half:
            return Size{0.5, 0.5};
        case WindowSizePreset::threeQ:
            return Size{0.75, 0.75};
        case WindowSizePreset::full:
            return Size{0.92, 0.9};
        case WindowSizePreset::current:
            return std::nullopt;
    }
    return std::nullopt;
}

std::optional<Rect> targetFrame(WindowSizePreset preset, const Rect& visibleFrame,
                                double primaryHeight, bool framesFromBottomLeft) {
    auto f = factors(preset);
    if (!f)
        return std::nullopt;
    // The formula works in bottom-left coordinates; top-left frames are turned first.
    Rect v = visibleFrame;
    if (!framesFromBottomLeft)
        v.y = primaryHeight - visibleFrame.maxY();
    const double width = v.width * f->width;
    const double height = v.height * f->height;
    const double x = v.midX() - width * 0.5;
    const double y = primaryHeight - (height * 0.5 + v.midY());
    return Rect{x, y, width, height};
}

std::optional<SizableWindow> frontWindow(WindowSizingBackend& sizing, std::int32_t pid) {
    if (auto main = sizing.mainWindow(pid))
        return main;
    auto all = sizing.windows(pid);
    if (!all.empty())
        return all.front();
    return std::nullopt;
}

void apply(const Environment& env, WindowSizePreset preset, std::int32_t pid,
           std::optional<Size> maximum) {
    if (preset == WindowSizePreset::current || !env.sizing || !env.screens)
        return;
    auto window = frontWindow(*env.sizing, pid);
    if (!window)
        return;
    auto main = env.screens->mainScreen();
    if (!main)
        return;
    auto primary = env.screens->primaryScreen();
    const double primaryHeight = primary ? primary->frame.height : main->frame.height;
    auto frame =
        targetFrame(preset, main->visibleFrame, primaryHeight, env.screens->framesFromBottomLeft());
    if (!frame)
        return;
    if (maximum) {
        const double width = std::min(frame->width, maximum->width);
        const double height = std::min(frame->height, maximum->height);
        frame = Rect{frame->midX() - width / 2, frame->midY() - height / 2, width, height};
    }
    env.sizing->setSize(*window, Size{frame->width, frame->height});
    env.sizing->setPosition(*window, Point{frame->x, frame->y});
}

}  // namespace zd::WindowResizer
