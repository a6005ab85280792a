#include "EwmhSpacesBackend.h"

#include <algorithm>

namespace zd::x11 {

namespace {
constexpr std::uint32_t kAllDesktops = 0xFFFFFFFF;
// More desktops than this is a broken property, not a desktop.
constexpr std::uint32_t kMaxDesktops = 1024;
}  // namespace

std::uint32_t EwmhSpacesBackend::desktopCount() const {
    auto count =
        connection_->cardinal(connection_->root(), connection_->atoms().netNumberOfDesktops);
    return std::min(count.value_or(0), kMaxDesktops);
}

std::uint64_t EwmhSpacesBackend::activeSpace() const {
    auto current =
        connection_->cardinal(connection_->root(), connection_->atoms().netCurrentDesktop);
    return current ? spaceId(*current) : 0;
}

Value EwmhSpacesBackend::managedDisplaySpaces() const {
    ValueArray spaces;
    for (std::uint32_t i = 0, n = desktopCount(); i < n; ++i) {
        spaces.push_back(ValueDictionary{{"type", 0}, {"ManagedSpaceID", spaceId(i)}});
    }
    return ValueArray{ValueDictionary{{"Spaces", spaces}}};
}

Value EwmhSpacesBackend::spacesForWindows(const std::vector<std::uint32_t>& windows,
                                          int /*mask: EWMH has desktops of one kind only*/) const {
    ValueArray ids;
    const std::uint32_t count = desktopCount();
    for (std::uint32_t window : windows) {
        auto desktop = connection_->cardinal(window, connection_->atoms().netWmDesktop);
        if (!desktop)
            continue;
        if (*desktop == kAllDesktops) {
            for (std::uint32_t i = 0; i < count; ++i)
                ids.emplace_back(spaceId(i));
        } else {
            ids.emplace_back(spaceId(*desktop));
        }
    }
    return ids;
}

}  // namespace zd::x11
