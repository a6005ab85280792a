#pragma once
// What the X display knows about a process's windows: their class (the identity of an
// application that has no desktop file) and a way to bring them forward. Each call opens its
// own short connection to the display named by DISPLAY, so it is safe from any thread.

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace zd::x11 {

// The managed windows (_NET_CLIENT_LIST, bottom to top) whose _NET_WM_PID is `pid`.
std::vector<std::uint32_t> clientWindowsOf(std::int32_t pid);

// The class part of WM_CLASS of the process's topmost window; none without a window.
std::optional<std::string> windowClassOf(std::int32_t pid);
// The same for every process that has a managed window, in one pass.
std::map<std::int32_t, std::string> windowClassesByPid();

// For every process with a managed window: whether any of its windows belongs in a task bar
// (not a dock, not the desktop, not _NET_WM_STATE_SKIP_TASKBAR). A process whose windows all
// stay out of the task bar is a panel, a dock or a desktop, not an application of the user's.
std::map<std::int32_t, bool> taskbarPresenceByPid();

// Asks the window manager to activate (focus and raise) the process's topmost window, through
// _NET_ACTIVE_WINDOW as a pager would. False if it has no window or no display answers.
bool activateWindowsOf(std::int32_t pid);

}  // namespace zd::x11
