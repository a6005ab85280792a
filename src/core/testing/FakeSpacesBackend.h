#pragma once
// Scripted desktops: the reply of the display list and, per window, the reply of its desktops.

#include <map>
#include <vector>

#include "env/SpacesBackend.h"

namespace zd::testing {

class FakeSpacesBackend : public SpacesBackend {
  public:
    std::uint64_t activeSpace() const override { return active; }
    Value managedDisplaySpaces() const override { return displays; }
    Value spacesForWindows(const std::vector<std::uint32_t>& windows, int mask) const override {
        queries.push_back(windows);
        masks.push_back(mask);
        if (windows.size() != 1)
            return Value();
        auto it = windowSpaces.find(windows.front());
        return it == windowSpaces.end() ? Value(ValueArray{}) : it->second;
    }

    // One display with ordinary desktops of the given ids.
    static Value displayWith(const std::vector<std::uint64_t>& ids) {
        ValueArray spaces;
        for (auto id : ids) {
            spaces.push_back(ValueDictionary{{"type", 0}, {"ManagedSpaceID", id}});
        }
        return ValueDictionary{{"Spaces", spaces}};
    }
    void placeWindow(std::uint32_t window, const std::vector<std::uint64_t>& ids) {
        ValueArray array;
        for (auto id : ids)
            array.emplace_back(id);
        windowSpaces[window] = array;
    }

    std::uint64_t active = 0;
    Value displays;
    std::map<std::uint32_t, Value> windowSpaces;
    mutable std::vector<std::vector<std::uint32_t>> queries;
    mutable std::vector<int> masks;
};

}  // namespace zd::testing
