#pragma once
// Finding the run's application again in a fresh list of targets, after a relaunch has given
// its windows new numbers: by bundle id first, then by application name.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "model/CaptureTarget.h"

namespace zd::SourceSelection {

// The id of the first target with the bundle id, else of the first with the name; empty
// (absent or "") keys are not looked for.
std::optional<std::uint32_t> findApplication(const std::vector<CaptureTarget>& targets,
                                             const std::optional<std::string>& bundleID,
                                             const std::optional<std::string>& appName);

// With nothing found: the selection stays while its window is still listed, else it goes.
std::optional<std::uint32_t> keptSelection(const std::vector<CaptureTarget>& targets,
                                           std::optional<std::uint32_t> selected);

}  // namespace zd::SourceSelection
