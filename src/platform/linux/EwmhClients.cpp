#include "EwmhClients.h"

#include <algorithm>
#include <fstream>

#include "env/WindowListBackend.h"

namespace zd::x11 {

namespace {

std::optional<std::string> processName(std::int32_t pid) {
    std::ifstream comm("/proc/" + std::to_string(pid) + "/comm");
    std::string name;
    if (!comm || !std::getline(comm, name) || name.empty())
        return std::nullopt;
    return name;
}

// WM_CLASS holds "instance\0Class\0"; the class names the application.
std::optional<std::string> windowClass(const std::string& raw) {
    auto first = raw.find('\0');
    if (first == std::string::npos)
        return raw.empty() ? std::nullopt : std::optional(raw);
    std::string cls = raw.substr(first + 1);
    if (auto end = cls.find('\0'); end != std::string::npos)
        cls.resize(end);
    if (!cls.empty())
        return cls;
    std::string instance = raw.substr(0, first);
    return instance.empty() ? std::nullopt : std::optional(instance);
}

}  // namespace

std::vector<ClientWindow> EwmhClients::clients() const {
    const auto& atoms = connection_->atoms();
    auto ids =
        connection_->cardinals(connection_->root(), atoms.netClientListStacking, XCB_ATOM_WINDOW);
    if (!ids)
        ids = connection_->cardinals(connection_->root(), atoms.netClientList, XCB_ATOM_WINDOW);
    std::vector<ClientWindow> result;
    if (!ids)
        return result;
    for (auto it = ids->rbegin(); it != ids->rend(); ++it) {
        ClientWindow client = describe(*it);
        if (client.bounds)
            result.push_back(std::move(client));  // gone meanwhile otherwise
    }
    return result;
}

ClientWindow EwmhClients::describe(xcb_window_t window) const {
    const auto& atoms = connection_->atoms();
    ClientWindow client;
    client.id = window;
    client.pid = connection_->pidOf(window);
    if (names_ && client.pid)
        client.ownerName = names_(*client.pid);
    if (auto raw = connection_->bytes(window, atoms.wmClass); raw && !client.ownerName)
        client.ownerName = windowClass(*raw);
    if (!client.ownerName && client.pid)
        client.ownerName = processName(*client.pid);
    if (auto name = connection_->bytes(window, atoms.netWmName)) {
        client.title = *name;
    } else if (auto legacy = connection_->bytes(window, atoms.wmName)) {
        client.title = *legacy;
    }
    if (auto seen = footprint(window)) {
        const double scale = connection_->scale();
        client.bounds = Rect{seen->visible.x / scale, seen->visible.y / scale,
                             seen->visible.width / scale, seen->visible.height / scale};
    }
    client.layer = layerOf(window);
    return client;
}

namespace {

Extents extentsOf(const std::optional<std::vector<std::uint32_t>>& values) {
    if (!values || values->size() < 4)
        return {};
    const auto& v = *values;
    return Extents{double(v[0]), double(v[1]), double(v[2]), double(v[3])};
}

}  // namespace

Extents EwmhClients::frameExtents(xcb_window_t window) const {
    return extentsOf(
        connection_->cardinals(window, connection_->atoms().netFrameExtents, XCB_ATOM_CARDINAL));
}

Extents EwmhClients::shadowExtents(xcb_window_t window) const {
    return extentsOf(
        connection_->cardinals(window, connection_->atoms().gtkFrameExtents, XCB_ATOM_CARDINAL));
}

std::optional<Footprint> EwmhClients::footprint(xcb_window_t window) const {
    auto client = connection_->rootGeometry(window);
    auto top = connection_->topLevelOf(window);
    if (!client || !top)
        return std::nullopt;
    auto topRect = *top == window ? client : connection_->rootGeometry(*top);
    if (!topRect)
        return std::nullopt;
    Footprint result{*top, *topRect, *topRect};
    const Extents shadow = shadowExtents(window);
    if (shadow.left + shadow.right + shadow.top + shadow.bottom > 0) {
        // A client that draws its own decoration and shadow: the shadow's margins are
        // transparent, and no window manager frame around it shows anything.
        result.visible = Rect{client->x + shadow.left, client->y + shadow.top,
                              client->width - shadow.left - shadow.right,
                              client->height - shadow.top - shadow.bottom};
    }
    return result;
}

int EwmhClients::layerOf(xcb_window_t window) const {
    const auto& a = connection_->atoms();
    auto types = connection_->cardinals(window, a.netWmWindowType, XCB_ATOM_ATOM);
    // The first type the window names that we know decides, as EWMH asks.
    if (types) {
        for (auto type : *types) {
            if (type == a.netWmWindowTypeNormal || type == a.netWmWindowTypeDialog ||
                type == a.netWmWindowTypeSplash) {
                break;
            }
            if (type == a.netWmWindowTypeDesktop)
                return Layer::desktop;
            if (type == a.netWmWindowTypeDock)
                return Layer::dock;
            if (type == a.netWmWindowTypeToolbar || type == a.netWmWindowTypeUtility) {
                return Layer::floating;
            }
            if (type == a.netWmWindowTypeMenu || type == a.netWmWindowTypeDropdownMenu ||
                type == a.netWmWindowTypePopupMenu) {
                return Layer::popUpMenu;
            }
            if (type == a.netWmWindowTypeTooltip || type == a.netWmWindowTypeNotification) {
                return Layer::status;
            }
        }
    }
    if (auto states = connection_->cardinals(window, a.netWmState, XCB_ATOM_ATOM)) {
        if (std::find(states->begin(), states->end(), a.netWmStateAbove) != states->end()) {
            return Layer::floating;
        }
    }
    return Layer::normal;
}

Value EwmhClients::record(const ClientWindow& client) {
    ValueDictionary d{{WindowKey::number, static_cast<std::int64_t>(client.id)},
                      {WindowKey::layer, client.layer},
                      {WindowKey::name, client.title}};
    if (client.pid)
        d[WindowKey::ownerPID] = *client.pid;
    if (client.ownerName)
        d[WindowKey::ownerName] = *client.ownerName;
    if (client.bounds) {
        d[WindowKey::bounds] = ValueDictionary{{"X", client.bounds->x},
                                               {"Y", client.bounds->y},
                                               {"Width", client.bounds->width},
                                               {"Height", client.bounds->height}};
    }
    return d;
}

}  // namespace zd::x11
