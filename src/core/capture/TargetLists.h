#pragma once
// The main window's two live lists of windows and the single-window selection. These are the
// main window's operations, written over the state they change so that the window's state
// object calls them with its own fields.

#include <cstdint>
#include <optional>
#include <vector>

#include "model/CaptureTarget.h"
#include "model/CompositeEntry.h"

namespace zd {

struct Environment;

namespace TargetLists {

// Refreshes `targets` (narrowed to `selectedSpaceID` unless 0). When the selected window has
// gone, the selection moves to the first window of the same application, else is unset.
void reloadTargets(const Environment& env, std::uint64_t selectedSpaceID,
                   std::vector<CaptureTarget>& targets,
                   std::optional<std::uint32_t>& selectedTargetID);

// The selected target; none if unset or no longer listed.
std::optional<CaptureTarget> selectedTarget(const std::vector<CaptureTarget>& targets,
                                            std::optional<std::uint32_t> selectedTargetID);

// The multiple-windows rows freshly read from the system, front-most first, all ticked.
std::vector<CompositeEntry> freshCompositeRows(const Environment& env,
                                               std::uint64_t selectedSpaceID);
// Keeps the order and ticks of `present`, takes names from `fresh`, drops rows whose window
// has gone and appends new windows at the end.
std::vector<CompositeEntry> mergeCompositeRows(const std::vector<CompositeEntry>& present,
                                               const std::vector<CompositeEntry>& fresh);
// Both of the above, stored into `compositeWindows`.
void reloadCompositeWindows(const Environment& env, std::uint64_t selectedSpaceID,
                            std::vector<CompositeEntry>& compositeWindows);

}  // namespace TargetLists
}  // namespace zd
