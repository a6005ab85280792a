#pragma once
// The desktops ("Spaces") as the window server reports them, in its own shapes:
// managedDisplaySpaces() an array with one dictionary per display, each with "Spaces", an
// array of dictionaries with "type" (0 for an ordinary desktop) and "ManagedSpaceID".

#include <cstdint>
#include <vector>

#include "model/Value.h"

namespace zd {

class SpacesBackend {
  public:
    virtual ~SpacesBackend() = default;
    // The id of the desktop shown now.
    virtual std::uint64_t activeSpace() const = 0;
    // One dictionary per display, as described above; anything else when unreadable.
    virtual Value managedDisplaySpaces() const = 0;
    // The ids of the desktops the windows lie on, as an array of integers. `mask` 7 asks for
    // desktops of every kind.
    virtual Value spacesForWindows(const std::vector<std::uint32_t>& windows, int mask) const = 0;
};

}  // namespace zd
