#pragma once
// The window manager's managed windows as EWMH describes them, front-most first, each with
// what the window lists need: owner pid, application name, title, bounds and the layer its
// type puts it on. Window numbers are X window ids (the client's, not its frame's).
//
// A window's bounds are what the user sees of it: the window manager's frame with its title
// bar where it decorates the window, the client less the transparent shadow margins that a
// client-side-decorated GTK window declares (_GTK_FRAME_EXTENTS). They are in points, root
// coordinates: pixels over the desktop's scale.

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "XcbConnection.h"
#include "model/Value.h"

namespace zd::x11 {

// Layers in the window server's numbering, so the core's rules apply unchanged.
namespace Layer {
inline constexpr int desktop = -2147483623;  // below everything: the desktop's own window
inline constexpr int normal = 0;
inline constexpr int floating = 3;  // kept above: toolbars, utilities, "always on top"
inline constexpr int dock = 20;     // panels and docks
inline constexpr int status = 25;   // tooltips and notifications
inline constexpr int popUpMenu = 101;
}  // namespace Layer

// Where a window's visible part lies, in pixels: the top-level window that holds it (the
// frame, or the client itself) and the visible rectangle in root coordinates.
struct Footprint {
    xcb_window_t topLevel = 0;
    Rect topLevelRect;  // inside its border
    Rect visible;
};

// The four margins of a frame-extents property: left, right, top, bottom.
struct Extents {
    double left = 0, right = 0, top = 0, bottom = 0;
};

struct ClientWindow {
    xcb_window_t id = 0;
    std::optional<std::int32_t> pid;
    std::optional<std::string> ownerName;  // desktop file's Name, WM_CLASS's class, or comm
    std::string title;
    std::optional<Rect> bounds;
    int layer = Layer::normal;
};

// The name a user knows a process's application by (its desktop file's Name), if any.
using ApplicationNames = std::function<std::optional<std::string>(std::int32_t pid)>;

class EwmhClients {
  public:
    explicit EwmhClients(std::shared_ptr<XcbConnection> connection)
        : connection_(std::move(connection)) {}
    // Owner names come from `names` first, then WM_CLASS, then the process's own name.
    void setApplicationNames(ApplicationNames names) { names_ = std::move(names); }

    // Managed windows, front-most first (_NET_CLIENT_LIST_STACKING reversed; the plain client
    // list where the window manager keeps no stacking order).
    std::vector<ClientWindow> clients() const;
    ClientWindow describe(xcb_window_t window) const;
    // The window's visible part; none when it is gone.
    std::optional<Footprint> footprint(xcb_window_t window) const;
    // The window manager's decoration around the client (_NET_FRAME_EXTENTS) and the client's
    // own shadow margins (_GTK_FRAME_EXTENTS), in pixels; zero where absent.
    Extents frameExtents(xcb_window_t window) const;
    Extents shadowExtents(xcb_window_t window) const;

    // The window server's record of one window (the keys of WindowListBackend.h).
    static Value record(const ClientWindow& client);

  private:
    int layerOf(xcb_window_t window) const;

    std::shared_ptr<XcbConnection> connection_;
    ApplicationNames names_;
};

}  // namespace zd::x11
