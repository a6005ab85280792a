#pragma once
// The process that owns a window: its _NET_WM_PID, else what the X server knows of the client
// that made it (the X-Resource extension), for programs that don't set the property (xmessage).

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>

namespace zd::x11 {

std::optional<std::int32_t> windowPid(xcb_connection_t* connection, xcb_window_t window,
                                      xcb_atom_t netWmPid);

}  // namespace zd::x11
