#pragma once
// The window manager's managed windows as EWMH describes them, front-most first, each with
// what the window lists need: owner pid, application name, title, bounds in root coordinates
// and the layer its type puts it on. Window numbers are X window ids.

#include <cstdint>
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

struct ClientWindow {
    xcb_window_t id = 0;
    std::optional<std::int32_t> pid;
    std::optional<std::string> ownerName;  // WM_CLASS's class, else /proc/<pid>/comm
    std::string title;
    std::optional<Rect> bounds;
    int layer = Layer::normal;
};

class EwmhClients {
  public:
    explicit EwmhClients(std::shared_ptr<XcbConnection> connection)
        : connection_(std::move(connection)) {}

    // Managed windows, front-most first (_NET_CLIENT_LIST_STACKING reversed; the plain client
    // list where the window manager keeps no stacking order).
    std::vector<ClientWindow> clients() const;
    ClientWindow describe(xcb_window_t window) const;

    // The window server's record of one window (the keys of WindowListBackend.h).
    static Value record(const ClientWindow& client);

  private:
    int layerOf(xcb_window_t window) const;

    std::shared_ptr<XcbConnection> connection_;
};

}  // namespace zd::x11
