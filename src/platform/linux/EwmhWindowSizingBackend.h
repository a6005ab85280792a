#pragma once
// Sizing and placing a process's window through the window manager (_NET_MOVERESIZE_WINDOW,
// sent as a pager would). Sizes are kept within the window's own minimum and maximum
// (WM_NORMAL_HINTS). Sizes and positions are in points and speak of the window as a capture
// shows it: the window manager's frame included, a client-side shadow left out (see
// EwmhClients.h); the client's own rectangle is worked out from the frame's extents.

#include <memory>

#include "EwmhClients.h"
#include "env/WindowSizingBackend.h"

namespace zd::x11 {

class EwmhWindowSizingBackend : public WindowSizingBackend {
  public:
    explicit EwmhWindowSizingBackend(std::shared_ptr<XcbConnection> connection)
        : connection_(connection), clients_(std::move(connection)) {}

    // The active window when it is the process's ordinary window.
    std::optional<SizableWindow> mainWindow(std::int32_t pid) override;
    // The process's ordinary windows, front-most first.
    std::vector<SizableWindow> windows(std::int32_t pid) override;
    bool setSize(SizableWindow window, Size size) override;
    bool setPosition(SizableWindow window, Point topLeft) override;

    // The size the window accepts: `size` kept within its minimum and maximum.
    Size allowedSize(xcb_window_t window, Size size) const;
    // The client's rectangle in pixels that shows `visible` (points) to the user.
    Rect clientRectFor(xcb_window_t window, Rect visible) const;

  private:
    std::shared_ptr<XcbConnection> connection_;
    EwmhClients clients_;
};

}  // namespace zd::x11
