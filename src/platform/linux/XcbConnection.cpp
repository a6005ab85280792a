#include "XcbConnection.h"

#include "DesktopScale.h"
#include "WindowPid.h"

#include <xcb/composite.h>
#include <xcb/randr.h>

#include <algorithm>

#include <array>
#include <cstring>
#include <string_view>
#include <utility>

namespace zd::x11 {

Expected<std::shared_ptr<XcbConnection>, std::string> XcbConnection::open(const char* display) {
    int screenNumber = 0;
    xcb_connection_t* c = xcb_connect(display, &screenNumber);
    if (!c || xcb_connection_has_error(c)) {
        if (c)
            xcb_disconnect(c);
        const char* name = display ? display : std::getenv("DISPLAY");
        return unexpected("Can't open the X display " + std::string(name ? name : "(unset)"));
    }
    std::shared_ptr<XcbConnection> connection(new XcbConnection(c, screenNumber));
    if (!connection->screen_)
        return unexpected(std::string("The X display has no screen"));
    return connection;
}

XcbConnection::XcbConnection(xcb_connection_t* connection, int screenNumber)
    : connection_(connection) {
    auto it = xcb_setup_roots_iterator(xcb_get_setup(connection_));
    for (int i = 0; it.rem && i < screenNumber; ++i)
        xcb_screen_next(&it);
    screen_ = it.rem ? it.data : nullptr;

    const std::array<std::pair<xcb_atom_t*, std::string_view>, 31> names{{
        {&atoms_.netClientListStacking, "_NET_CLIENT_LIST_STACKING"},
        {&atoms_.netClientList, "_NET_CLIENT_LIST"},
        {&atoms_.netWmPid, "_NET_WM_PID"},
        {&atoms_.netWmName, "_NET_WM_NAME"},
        {&atoms_.netWmWindowType, "_NET_WM_WINDOW_TYPE"},
        {&atoms_.netWmWindowTypeNormal, "_NET_WM_WINDOW_TYPE_NORMAL"},
        {&atoms_.netWmWindowTypeDialog, "_NET_WM_WINDOW_TYPE_DIALOG"},
        {&atoms_.netWmWindowTypeDock, "_NET_WM_WINDOW_TYPE_DOCK"},
        {&atoms_.netWmWindowTypeDesktop, "_NET_WM_WINDOW_TYPE_DESKTOP"},
        {&atoms_.netWmWindowTypeToolbar, "_NET_WM_WINDOW_TYPE_TOOLBAR"},
        {&atoms_.netWmWindowTypeMenu, "_NET_WM_WINDOW_TYPE_MENU"},
        {&atoms_.netWmWindowTypeUtility, "_NET_WM_WINDOW_TYPE_UTILITY"},
        {&atoms_.netWmWindowTypeSplash, "_NET_WM_WINDOW_TYPE_SPLASH"},
        {&atoms_.netWmWindowTypeTooltip, "_NET_WM_WINDOW_TYPE_TOOLTIP"},
        {&atoms_.netWmWindowTypeNotification, "_NET_WM_WINDOW_TYPE_NOTIFICATION"},
        {&atoms_.netWmWindowTypeDropdownMenu, "_NET_WM_WINDOW_TYPE_DROPDOWN_MENU"},
        {&atoms_.netWmWindowTypePopupMenu, "_NET_WM_WINDOW_TYPE_POPUP_MENU"},
        {&atoms_.netWmState, "_NET_WM_STATE"},
        {&atoms_.netWmStateAbove, "_NET_WM_STATE_ABOVE"},
        {&atoms_.netWmDesktop, "_NET_WM_DESKTOP"},
        {&atoms_.netNumberOfDesktops, "_NET_NUMBER_OF_DESKTOPS"},
        {&atoms_.netCurrentDesktop, "_NET_CURRENT_DESKTOP"},
        {&atoms_.netWorkarea, "_NET_WORKAREA"},
        {&atoms_.netActiveWindow, "_NET_ACTIVE_WINDOW"},
        {&atoms_.netMoveresizeWindow, "_NET_MOVERESIZE_WINDOW"},
        {&atoms_.wmClass, "WM_CLASS"},
        {&atoms_.wmName, "WM_NAME"},
        {&atoms_.netFrameExtents, "_NET_FRAME_EXTENTS"},
        {&atoms_.gtkFrameExtents, "_GTK_FRAME_EXTENTS"},
        {&atoms_.xsettingsSelection, "_XSETTINGS_S0"},
        {&atoms_.xsettingsSettings, "_XSETTINGS_SETTINGS"},
    }};
    // Ask for all atoms first, then collect the replies: one round trip instead of 31.
    std::array<xcb_intern_atom_cookie_t, names.size()> cookies{};
    for (std::size_t i = 0; i < names.size(); ++i) {
        cookies[i] =
            xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(names[i].second.size()),
                            names[i].second.data());
    }
    for (std::size_t i = 0; i < names.size(); ++i) {
        XcbReply<xcb_intern_atom_reply_t> reply(
            xcb_intern_atom_reply(connection_, cookies[i], nullptr));
        *names[i].first = reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    }

    XcbReply<xcb_composite_query_version_reply_t> composite(xcb_composite_query_version_reply(
        connection_, xcb_composite_query_version(connection_, 0, 4), nullptr));
    hasComposite_ = composite && (composite->major_version > 0 || composite->minor_version >= 2);
    scale_ = readScale();
}

double XcbConnection::readScale() const {
    // XSETTINGS live on the window that owns the selection; Xft.dpi in the root's resources.
    std::optional<std::string> xsettings;
    XcbReply<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(
        connection_, xcb_get_selection_owner(connection_, atoms_.xsettingsSelection), nullptr));
    if (owner && owner->owner != XCB_WINDOW_NONE)
        xsettings = bytes(owner->owner, atoms_.xsettingsSettings);
    const char* gdkScale = std::getenv("GDK_SCALE");
    return desktopScale(DesktopScaleSources{
        xsettings ? xsettingsIntegers(*xsettings) : std::map<std::string, std::int32_t>{},
        gdkScale ? std::optional<std::string>(gdkScale) : std::nullopt,
        bytes(root(), XCB_ATOM_RESOURCE_MANAGER)});
}

std::optional<xcb_window_t> XcbConnection::topLevelOf(xcb_window_t window) const {
    xcb_window_t current = window;
    for (int depth = 0; depth < 64; ++depth) {
        XcbReply<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(connection_, xcb_query_tree(connection_, current), nullptr));
        if (!tree)
            return std::nullopt;
        if (tree->parent == tree->root || tree->parent == XCB_WINDOW_NONE)
            return current;
        current = tree->parent;
    }
    return current;
}

XcbConnection::~XcbConnection() {
    xcb_disconnect(connection_);
}

std::optional<std::vector<std::uint32_t>> XcbConnection::cardinals(xcb_window_t window,
                                                                   xcb_atom_t property,
                                                                   xcb_atom_t type) const {
    XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        connection_, xcb_get_property(connection_, 0, window, property, type, 0, 1u << 16),
        nullptr));
    if (!reply || reply->format != 32 || reply->type != type)
        return std::nullopt;
    const auto* data = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    const auto count = static_cast<std::size_t>(xcb_get_property_value_length(reply.get())) / 4;
    return std::vector<std::uint32_t>(data, data + count);
}

std::optional<std::uint32_t> XcbConnection::cardinal(xcb_window_t window, xcb_atom_t property,
                                                     xcb_atom_t type) const {
    auto values = cardinals(window, property, type);
    if (!values || values->empty())
        return std::nullopt;
    return values->front();
}

std::optional<std::string> XcbConnection::bytes(xcb_window_t window, xcb_atom_t property) const {
    XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        connection_,
        xcb_get_property(connection_, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, 1u << 14),
        nullptr));
    if (!reply || reply->format != 8 || reply->type == XCB_ATOM_NONE)
        return std::nullopt;
    const auto* data = static_cast<const char*>(xcb_get_property_value(reply.get()));
    return std::string(data, static_cast<std::size_t>(xcb_get_property_value_length(reply.get())));
}

std::optional<Rect> XcbConnection::rootGeometry(xcb_window_t window) const {
    auto geometryCookie = xcb_get_geometry(connection_, window);
    auto translateCookie = xcb_translate_coordinates(connection_, window, root(), 0, 0);
    XcbReply<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(connection_, geometryCookie, nullptr));
    XcbReply<xcb_translate_coordinates_reply_t> origin(
        xcb_translate_coordinates_reply(connection_, translateCookie, nullptr));
    if (!geometry || !origin)
        return std::nullopt;
    return Rect{static_cast<double>(origin->dst_x), static_cast<double>(origin->dst_y),
                static_cast<double>(geometry->width), static_cast<double>(geometry->height)};
}

std::optional<std::int32_t> XcbConnection::pidOf(xcb_window_t window) const {
    return windowPid(connection_, window, atoms_.netWmPid);
}

std::vector<XcbConnection::Monitor> XcbConnection::monitors() const {
    std::vector<Monitor> result;
    XcbReply<xcb_randr_get_monitors_reply_t> reply(xcb_randr_get_monitors_reply(
        connection_, xcb_randr_get_monitors(connection_, root(), 1), nullptr));
    if (reply) {
        for (auto it = xcb_randr_get_monitors_monitors_iterator(reply.get()); it.rem;
             xcb_randr_monitor_info_next(&it)) {
            const auto& m = *it.data;
            if (m.width > 0 && m.height > 0) {
                result.push_back({Rect{double(m.x), double(m.y), double(m.width), double(m.height)},
                                  m.primary != 0});
            }
        }
    }
    if (result.empty()) {
        result.push_back(
            {Rect{0, 0, double(screen_->width_in_pixels), double(screen_->height_in_pixels)},
             true});
    }
    std::stable_partition(result.begin(), result.end(), [](const Monitor& m) { return m.primary; });
    return result;
}

void XcbConnection::sendToRoot(xcb_window_t window, xcb_atom_t type,
                               const std::uint32_t (&data)[5]) const {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = type;
    std::memcpy(event.data.data32, data, sizeof(data));
    xcb_send_event(connection_, 0, root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&event));
    xcb_flush(connection_);
}

}  // namespace zd::x11
