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
    // The first screen, whose height turns bottom-left y into top-left y. Where there is only
    // one coordinate origin for all screens this is the main screen's.
    virtual std::optional<ScreenInfo> primaryScreen() const { return mainScreen(); }
    // True where frames count y upward from the lower left (macOS), false where they count it
    // downward from the top left (X11).
    virtual bool framesFromBottomLeft() const { return false; }
};

}  // namespace zd
