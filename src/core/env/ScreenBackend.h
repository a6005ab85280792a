#pragma once
// The machine's screens, as the platform reports them.

#include <optional>

#include "model/Geometry.h"

namespace zd {

struct ScreenInfo {
    // In points, in the platform's screen coordinates (on macOS origin at the lower left of the
    // primary display; on X11 the root window's, origin at the top left).
    Rect frame;
    // The frame less menu bar, dock or panels: the area a window may take.
    Rect visibleFrame;
    double backingScaleFactor = 1.0;
};

class ScreenBackend {
public:
    virtual ~ScreenBackend() = default;
    // The screen with the keyboard focus; nothing when there is no screen at all.
    virtual std::optional<ScreenInfo> mainScreen() const = 0;
};

}  // namespace zd
