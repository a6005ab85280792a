#pragma once
// A process's windows as the accessibility layer (or the window manager) sees them: which is
// in front, and setting a size and a top-left position. Failures are reported but the caller
// drops them: sizing is a best effort.

#include <cstdint>
#include <optional>
#include <vector>

#include "model/Geometry.h"

namespace zd {

// A window of the sizing layer; meaningful only to the backend that gave it.
struct SizableWindow {
    std::uint64_t handle = 0;
    friend bool operator==(const SizableWindow&, const SizableWindow&) = default;
};

class WindowSizingBackend {
  public:
    virtual ~WindowSizingBackend() = default;
    // The process's main window; none when the call fails or there is none.
    virtual std::optional<SizableWindow> mainWindow(std::int32_t pid) = 0;
    // All its windows, front-most first; empty when the call fails.
    virtual std::vector<SizableWindow> windows(std::int32_t pid) = 0;
    // Size in points. False when it couldn't be set.
    virtual bool setSize(SizableWindow window, Size size) = 0;
    // Top-left corner in points, in top-left screen coordinates.
    virtual bool setPosition(SizableWindow window, Point topLeft) = 0;
    // Whether this program may size other programs' windows. With `prompt` the system also
    // asks the user to grant it. Window managers without such a permission always allow it.
    virtual bool isProcessTrusted(bool prompt) {
        (void)prompt;
        return true;
    }
};

}  // namespace zd
