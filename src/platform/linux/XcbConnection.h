#pragma once
// One connection to the X display, shared by the X11 backends: the atoms they use, interned
// once, and typed property reads. xcb is thread-safe, so backends may call from workers.
// Replies are owned by `XcbReply`, freed with free().

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "model/Expected.h"
#include "model/Geometry.h"

namespace zd::x11 {

struct FreeDeleter {
    void operator()(void* p) const { std::free(p); }
};
template <class T>
using XcbReply = std::unique_ptr<T, FreeDeleter>;

class XcbConnection {
  public:
    struct Atoms {
        xcb_atom_t netClientListStacking, netClientList, netWmPid, netWmName, netWmWindowType,
            netWmWindowTypeNormal, netWmWindowTypeDialog, netWmWindowTypeDock,
            netWmWindowTypeDesktop, netWmWindowTypeToolbar, netWmWindowTypeMenu,
            netWmWindowTypeUtility, netWmWindowTypeSplash, netWmWindowTypeTooltip,
            netWmWindowTypeNotification, netWmWindowTypeDropdownMenu, netWmWindowTypePopupMenu,
            netWmState, netWmStateAbove, netWmDesktop, netNumberOfDesktops, netCurrentDesktop,
            netWorkarea, netActiveWindow, netMoveresizeWindow, wmClass, wmName, netFrameExtents,
            gtkFrameExtents, xsettingsSelection, xsettingsSettings;
    };

    // Connects to `display` (DISPLAY when null). The text says why it couldn't.
    static Expected<std::shared_ptr<XcbConnection>, std::string> open(
        const char* display = nullptr);
    ~XcbConnection();
    XcbConnection(const XcbConnection&) = delete;
    XcbConnection& operator=(const XcbConnection&) = delete;

    xcb_connection_t* get() const { return connection_; }
    xcb_screen_t* screen() const { return screen_; }
    xcb_window_t root() const { return screen_->root; }
    const Atoms& atoms() const { return atoms_; }
    bool hasComposite() const { return hasComposite_; }
    // Pixels per point of the desktop, as the session tells its toolkits (DesktopScale.h); read
    // once, when the connection opens.
    double scale() const { return scale_; }

    // Property reads; none when absent or of another format.
    std::optional<std::vector<std::uint32_t>> cardinals(xcb_window_t window, xcb_atom_t property,
                                                        xcb_atom_t type) const;
    std::optional<std::uint32_t> cardinal(xcb_window_t window, xcb_atom_t property,
                                          xcb_atom_t type = XCB_ATOM_CARDINAL) const;
    // 8-bit data of any type, as bytes.
    std::optional<std::string> bytes(xcb_window_t window, xcb_atom_t property) const;

    // The window's rectangle in root coordinates (border excluded); none if it is gone.
    std::optional<Rect> rootGeometry(xcb_window_t window) const;
    // The window's ancestor that is a child of the root: the window manager's frame around a
    // managed window, or the window itself where it has no frame. None if it is gone.
    std::optional<xcb_window_t> topLevelOf(xcb_window_t window) const;
    // The process that owns the window: _NET_WM_PID, else what the X server knows of the
    // client that made it (X-Resource), for programs that don't set the property (xmessage).
    std::optional<std::int32_t> pidOf(xcb_window_t window) const;

    // The monitors (RandR), in pixels of root coordinates, the primary one first; the whole
    // root as one monitor where RandR tells nothing.
    struct Monitor {
        Rect frame;
        bool primary = false;
    };
    std::vector<Monitor> monitors() const;

    // Sends a client message to the root window as a pager would.
    void sendToRoot(xcb_window_t window, xcb_atom_t type, const std::uint32_t (&data)[5]) const;

  private:
    XcbConnection(xcb_connection_t* connection, int screenNumber);
    double readScale() const;

    xcb_connection_t* connection_;
    xcb_screen_t* screen_ = nullptr;
    Atoms atoms_{};
    bool hasComposite_ = false;
    double scale_ = 1.0;
};

}  // namespace zd::x11
