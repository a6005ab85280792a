#include "X11ProcessWindows.h"

#include "WindowPid.h"

#include <xcb/xcb.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace zd::x11 {

namespace {

struct Disconnect {
    void operator()(xcb_connection_t* c) const { xcb_disconnect(c); }
};
using Connection = std::unique_ptr<xcb_connection_t, Disconnect>;
template <class T>
using Reply = std::unique_ptr<T, decltype(&std::free)>;

struct Display {
    Connection connection;
    xcb_window_t root = 0;
};

std::optional<Display> open() {
    if (!std::getenv("DISPLAY"))
        return std::nullopt;
    int screenNumber = 0;
    Connection c(xcb_connect(nullptr, &screenNumber));
    if (!c || xcb_connection_has_error(c.get()))
        return std::nullopt;
    auto it = xcb_setup_roots_iterator(xcb_get_setup(c.get()));
    for (int i = 0; i < screenNumber && it.rem; ++i)
        xcb_screen_next(&it);
    if (!it.rem)
        return std::nullopt;
    const xcb_window_t root = it.data->root;
    return Display{std::move(c), root};
}

xcb_atom_t atom(xcb_connection_t* c, const char* name) {
    Reply<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(
            c, xcb_intern_atom(c, 0, static_cast<std::uint16_t>(std::strlen(name)), name), nullptr),
        &std::free);
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

Reply<xcb_get_property_reply_t> property(xcb_connection_t* c, xcb_window_t w, xcb_atom_t name,
                                         xcb_atom_t type, std::uint32_t length) {
    return {xcb_get_property_reply(c, xcb_get_property(c, 0, w, name, type, 0, length), nullptr),
            &std::free};
}

// Managed windows, bottom to top, with their owners' pids (windows without one left out).
// A pid comes from _NET_WM_PID or, failing that, from the X server (WindowPid.h).
std::vector<std::pair<xcb_window_t, std::int32_t>> windowsWithPids(const Display& d) {
    xcb_connection_t* c = d.connection.get();
    const xcb_atom_t clientList = atom(c, "_NET_CLIENT_LIST_STACKING");
    const xcb_atom_t wmPid = atom(c, "_NET_WM_PID");
    auto list = property(c, d.root, clientList, XCB_ATOM_WINDOW, 4096);
    std::vector<std::pair<xcb_window_t, std::int32_t>> found;
    if (!list || list->format != 32)
        return found;
    const auto* windows = static_cast<const xcb_window_t*>(xcb_get_property_value(list.get()));
    const int count = xcb_get_property_value_length(list.get()) / 4;
    for (int i = 0; i < count; ++i) {
        if (auto pid = windowPid(c, windows[i], wmPid))
            found.emplace_back(windows[i], *pid);
    }
    return found;
}

std::vector<std::uint32_t> windowsOf(const Display& d, std::int32_t pid) {
    std::vector<std::uint32_t> found;
    for (const auto& [window, owner] : windowsWithPids(d)) {
        if (owner == pid)
            found.push_back(window);
    }
    return found;
}

// The class part of a window's WM_CLASS: two NUL-terminated strings, instance then class.
std::optional<std::string> classOfWindow(xcb_connection_t* c, xcb_window_t window) {
    auto wmClass = property(c, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 256);
    if (!wmClass || wmClass->format != 8)
        return std::nullopt;
    const auto* text = static_cast<const char*>(xcb_get_property_value(wmClass.get()));
    const std::string value(text,
                            static_cast<std::size_t>(xcb_get_property_value_length(wmClass.get())));
    const auto nul = value.find('\0');
    if (nul == std::string::npos)
        return std::nullopt;
    std::string className = value.substr(nul + 1);
    if (const auto end = className.find('\0'); end != std::string::npos)
        className.resize(end);
    if (className.empty())
        return std::nullopt;
    return className;
}

}  // namespace

std::vector<std::uint32_t> clientWindowsOf(std::int32_t pid) {
    auto display = open();
    return display ? windowsOf(*display, pid) : std::vector<std::uint32_t>{};
}

std::optional<std::string> windowClassOf(std::int32_t pid) {
    auto display = open();
    if (!display)
        return std::nullopt;
    const auto windows = windowsOf(*display, pid);
    if (windows.empty())
        return std::nullopt;
    return classOfWindow(display->connection.get(), windows.back());
}

std::map<std::int32_t, std::string> windowClassesByPid() {
    std::map<std::int32_t, std::string> classes;
    auto display = open();
    if (!display)
        return classes;
    // Bottom to top: the topmost window of a process has the last word.
    for (const auto& [window, pid] : windowsWithPids(*display)) {
        if (auto name = classOfWindow(display->connection.get(), window))
            classes[pid] = *name;
    }
    return classes;
}

std::map<std::int32_t, bool> taskbarPresenceByPid() {
    std::map<std::int32_t, bool> presence;
    auto display = open();
    if (!display)
        return presence;
    xcb_connection_t* c = display->connection.get();
    const xcb_atom_t type = atom(c, "_NET_WM_WINDOW_TYPE");
    const xcb_atom_t state = atom(c, "_NET_WM_STATE");
    const std::array<xcb_atom_t, 3> outside{atom(c, "_NET_WM_WINDOW_TYPE_DOCK"),
                                            atom(c, "_NET_WM_WINDOW_TYPE_DESKTOP"),
                                            atom(c, "_NET_WM_STATE_SKIP_TASKBAR")};
    auto isOutside = [&](xcb_window_t window, xcb_atom_t name) {
        auto atoms = property(c, window, name, XCB_ATOM_ATOM, 64);
        if (!atoms || atoms->format != 32)
            return false;
        const auto* values = static_cast<const xcb_atom_t*>(xcb_get_property_value(atoms.get()));
        const int count = xcb_get_property_value_length(atoms.get()) / 4;
        return std::any_of(values, values + count, [&](xcb_atom_t a) {
            return std::find(outside.begin(), outside.end(), a) != outside.end();
        });
    };
    for (const auto& [window, pid] : windowsWithPids(*display)) {
        const bool inTaskbar = !isOutside(window, type) && !isOutside(window, state);
        presence[pid] = presence[pid] || inTaskbar;
    }
    return presence;
}

bool activateWindowsOf(std::int32_t pid) {
    auto display = open();
    if (!display)
        return false;
    xcb_connection_t* c = display->connection.get();
    const auto windows = windowsOf(*display, pid);
    if (windows.empty())
        return false;
    // No raise requests of our own: the window manager raises what it activates, and a
    // raise request sent alongside makes openbox drop the activation.
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = windows.back();
    event.type = atom(c, "_NET_ACTIVE_WINDOW");
    event.data.data32[0] = 2;  // source: a pager, which window managers obey without question
    event.data.data32[1] = XCB_CURRENT_TIME;
    xcb_send_event(c, 0, display->root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&event));
    return xcb_flush(c) > 0;
}

}  // namespace zd::x11
