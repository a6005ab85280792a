#include "AtspiMenuBackend.h"

#include <atspi/atspi.h>

#include <cstdlib>
#include <deque>
#include <memory>

namespace zd::x11 {

namespace {

struct Unref {
    void operator()(AtspiAccessible* object) const { g_object_unref(object); }
};
using Accessible = std::unique_ptr<AtspiAccessible, Unref>;

// A menu bar sits a few levels under the window; widgets are walked breadth first, and no
// further than this many, so that a document of ten thousand cells isn't read to its end.
constexpr int kMaxVisited = 600;

std::optional<int> childCount(AtspiAccessible* node) {
    GError* error = nullptr;
    const int count = atspi_accessible_get_child_count(node, &error);
    if (error) {
        g_error_free(error);
        return std::nullopt;
    }
    return count;
}

Accessible child(AtspiAccessible* node, int index) {
    GError* error = nullptr;
    Accessible result(atspi_accessible_get_child_at_index(node, index, &error));
    if (error)
        g_error_free(error);
    return result;
}

AtspiRole roleOf(AtspiAccessible* node) {
    GError* error = nullptr;
    const AtspiRole role = atspi_accessible_get_role(node, &error);
    if (error) {
        g_error_free(error);
        return ATSPI_ROLE_INVALID;
    }
    return role;
}

std::string nameOf(AtspiAccessible* node) {
    GError* error = nullptr;
    gchar* name = atspi_accessible_get_name(node, &error);
    if (error)
        g_error_free(error);
    std::string text = name ? name : "";
    g_free(name);
    return text;
}

std::vector<std::string> menuNames(AtspiAccessible* bar) {
    std::vector<std::string> names;
    const int count = childCount(bar).value_or(0);
    for (int i = 0; i < count; ++i) {
        if (Accessible item = child(bar, i))
            names.push_back(nameOf(item.get()));
    }
    return names;
}

std::vector<std::vector<std::string>> menuBarsUnder(Accessible application) {
    std::vector<std::vector<std::string>> bars;
    std::deque<Accessible> queue;
    queue.push_back(std::move(application));
    for (int visited = 0; !queue.empty() && visited < kMaxVisited; ++visited) {
        Accessible node = std::move(queue.front());
        queue.pop_front();
        if (roleOf(node.get()) == ATSPI_ROLE_MENU_BAR) {
            bars.push_back(menuNames(node.get()));
            continue;
        }
        const int count = childCount(node.get()).value_or(0);
        for (int i = 0; i < count; ++i) {
            if (Accessible next = child(node.get(), i))
                queue.push_back(std::move(next));
        }
    }
    return bars;
}

}  // namespace

bool AtspiMenuBackend::connect() {
    if (!tried_) {
        tried_ = true;
        // Without a session bus there is no accessibility bus to ask for.
        const char* bus = std::getenv("DBUS_SESSION_BUS_ADDRESS");
        const char* a11y = std::getenv("AT_SPI_BUS_ADDRESS");
        if ((bus && *bus) || (a11y && *a11y)) {
            const int status = atspi_init();  // 1: already set up by someone else
            connected_ = status == 0 || status == 1;
        }
    }
    return connected_;
}

std::optional<std::vector<std::vector<std::string>>> AtspiMenuBackend::menuBars(std::int32_t pid) {
    std::lock_guard lock(mutex_);
    if (!connect())
        return std::nullopt;
    Accessible desktop(atspi_get_desktop(0));
    if (!desktop)
        return std::nullopt;
    const auto applications = childCount(desktop.get());
    if (!applications)
        return std::nullopt;
    for (int i = 0; i < *applications; ++i) {
        Accessible application = child(desktop.get(), i);
        if (!application)
            continue;
        GError* error = nullptr;
        const guint owner = atspi_accessible_get_process_id(application.get(), &error);
        if (error) {
            g_error_free(error);
            continue;
        }
        if (static_cast<std::int32_t>(owner) == pid)
            return menuBarsUnder(std::move(application));
    }
    return std::nullopt;
}

}  // namespace zd::x11
