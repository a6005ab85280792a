#include "capture/Spaces.h"

#include <algorithm>

#include "env/SpacesBackend.h"

namespace zd::Spaces {

namespace {
// Desktops of every kind.
constexpr int kAllSpacesMask = 7;
}  // namespace

std::vector<Info> userSpaces(const SpacesBackend& backend) {
    std::vector<Info> spaces;
    const std::uint64_t active = backend.activeSpace();
    Value displays = backend.managedDisplaySpaces();
    const ValueArray* list = displays.asArray();
    if (!list ||
        !std::all_of(list->begin(), list->end(), [](const Value& d) { return d.isDictionary(); })) {
        return spaces;
    }
    int ordinal = 0;
    for (const Value& display : *list) {
        const Value* entries = display.find("Spaces");
        const ValueArray* array = entries ? entries->asArray() : nullptr;
        if (!array)
            continue;
        for (const Value& space : *array) {
            if (const Value* type = space.find("type")) {
                if (auto t = type->asInteger(); t && *t != 0)
                    continue;
            }
            const Value* idValue = space.find("ManagedSpaceID");
            auto id = idValue ? idValue->asInteger() : std::nullopt;
            if (!id || *id < 0)
                continue;
            const auto spaceId = static_cast<std::uint64_t>(*id);
            spaces.push_back(Info{spaceId, ++ordinal, spaceId == active});
        }
    }
    return spaces;
}

std::vector<std::uint64_t> spaceIDs(const SpacesBackend& backend, std::uint32_t windowID) {
    Value reply = backend.spacesForWindows({windowID}, kAllSpacesMask);
    const ValueArray* array = reply.asArray();
    if (!array)
        return {};
    std::vector<std::uint64_t> ids;
    for (const Value& v : *array) {
        auto id = v.asInteger();
        if (!id || *id < 0)
            return {};
        ids.push_back(static_cast<std::uint64_t>(*id));
    }
    return ids;
}

void reloadSpaces(const SpacesBackend* backend, std::vector<Info>& availableSpaces,
                  std::uint64_t& selectedSpaceID) {
    availableSpaces = backend ? userSpaces(*backend) : std::vector<Info>();
    auto has = [&](std::uint64_t id) {
        return std::any_of(availableSpaces.begin(), availableSpaces.end(),
                           [&](const Info& s) { return s.id == id; });
    };
    if (selectedSpaceID != 0 && has(selectedSpaceID))
        return;
    auto current = std::find_if(availableSpaces.begin(), availableSpaces.end(),
                                [](const Info& s) { return s.isCurrent; });
    if (current != availableSpaces.end()) {
        selectedSpaceID = current->id;
    } else {
        selectedSpaceID = availableSpaces.empty() ? 0 : availableSpaces.front().id;
    }
}

}  // namespace zd::Spaces
