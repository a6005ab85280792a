#pragma once
// Desktops ("Spaces"): which exist, in the user's order, and on which a window lies, so the
// window lists can be narrowed to one desktop.

#include <cstdint>
#include <vector>

#include "model/SpacesInfo.h"

namespace zd {

class SpacesBackend;

namespace Spaces {

// Ordinary desktops of all displays, numbered from 1 without gaps. Empty when unreadable.
std::vector<Info> userSpaces(const SpacesBackend& backend);
// The desktops a window lies on; empty when unreadable.
std::vector<std::uint64_t> spaceIDs(const SpacesBackend& backend, std::uint32_t windowID);

// Refreshes the list and keeps the choice while its desktop exists; otherwise chooses the
// active desktop, else the first, else none (0).
void reloadSpaces(const SpacesBackend* backend, std::vector<Info>& availableSpaces,
                  std::uint64_t& selectedSpaceID);

}  // namespace Spaces
}  // namespace zd
