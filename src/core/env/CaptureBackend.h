#pragma once
// The system's capture interface: what it can capture (displays and windows, on screen or not)
// and one frame of one window by itself. Both calls block; the core runs them on a worker.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "capture/CaptureError.h"
#include "model/Color.h"
#include "model/Expected.h"
#include "model/Geometry.h"
#include "model/Image.h"

namespace zd {

struct ShareableApplication {
    std::int32_t processID = 0;
    std::string applicationName;
};

struct ShareableWindow {
    std::uint32_t windowID = 0;
    Rect frame;  // points, global coordinates, origin at the top left
    std::optional<ShareableApplication> owningApplication;
    std::optional<std::string> title;
    int windowLayer = 0;
    // Pixels per point at which the system captures this window: where it hands out the
    // window's own backing store (X11), that store's density; where it scales to any asked size
    // (macOS), the fixed twice that every capture is taken at.
    double pixelDensity = 2.0;
};

struct ShareableDisplay {
    std::uint32_t displayID = 0;
    int width = 0;  // points
    int height = 0;
    // Its top-left corner in the global coordinates of window frames (points).
    Point origin;
    // Pixels per point of a picture of the whole display (see ShareableWindow::pixelDensity).
    double pixelDensity = 2.0;
};

struct ShareableContent {
    std::vector<ShareableDisplay> displays;
    std::vector<ShareableWindow> windows;
};

// Settings of one window capture.
struct WindowCaptureConfiguration {
    int width = 0;  // pixels of the picture
    int height = 0;
    bool showsCursor = false;
    bool capturesAudio = false;
    bool scalesToFit = false;
    // Where the window has no pixels; the system's default when absent.
    std::optional<Color> backgroundColor;
    // Leave the system's window shadow out (where the system can).
    bool ignoresShadowsSingleWindow = false;

    friend bool operator==(const WindowCaptureConfiguration&,
                           const WindowCaptureConfiguration&) = default;
};

class CaptureBackend {
  public:
    virtual ~CaptureBackend() = default;
    // Displays and windows, including windows that aren't on screen now. The text is the
    // system's own account of the failure.
    virtual Expected<ShareableContent, std::string> shareableContent() = 0;
    // One frame of the window alone, cut out from what lies behind or in front of it.
    virtual Expected<Image, CaptureFailure> captureWindow(
        const ShareableWindow& window, const WindowCaptureConfiguration& configuration) = 0;
};

}  // namespace zd
