#pragma once
// The window server's private desktop ("Spaces") calls, the only place that names them. Each
// is looked up by name when first needed; a system without one of them reads as a system
// without Spaces (nothing answered) rather than a crash.

#include <cstdint>
#include <optional>
#include <vector>

#include "model/Value.h"

namespace zd::mac::CGSFacade {

// The active desktop's id; none when the call is missing.
std::optional<std::uint64_t> activeSpace();
// The reply of the managed display spaces call as a value; null when missing or empty.
Value managedDisplaySpaces();
// The desktops the windows lie on; null when missing or empty.
Value spacesForWindows(const std::vector<std::uint32_t>& windows, int mask);

}  // namespace zd::mac::CGSFacade
