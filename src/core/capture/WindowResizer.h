#pragma once
// Brings a target's front window to the size of a preset, centred in the main screen's visible
// area, before a shot. A best effort: nothing is reported, the run goes on with whatever size
// the window took.

#include <cstdint>
#include <optional>

#include "env/ScreenBackend.h"
#include "env/WindowSizingBackend.h"
#include "model/Geometry.h"
#include "model/WindowSizePreset.h"

namespace zd {

struct Environment;

namespace WindowResizer {

// Width and height factors of a preset; none for `current`.
std::optional<Size> factors(WindowSizePreset preset);

// The window's frame (top-left corner in top-left coordinates, size in points) for a preset,
// given the main screen's visible frame and the primary screen's height in the screens' own
// coordinates. None for `current`.
std::optional<Rect> targetFrame(WindowSizePreset preset, const Rect& visibleFrame,
                                double primaryHeight, bool framesFromBottomLeft);

// The process's main window, else its first window, else none.
std::optional<SizableWindow> frontWindow(WindowSizingBackend& sizing, std::int32_t pid);

// Sizes, then places, the front window of `pid`; each exactly once, results ignored. With
// `maximum` (points) each side of the preset's frame is capped about its centre.
void apply(const Environment& env, WindowSizePreset preset, std::int32_t pid,
           std::optional<Size> maximum = std::nullopt);

}  // namespace WindowResizer
}  // namespace zd
