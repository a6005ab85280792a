#include "run/SourceSelection.h"

#include <algorithm>

namespace zd::SourceSelection {

std::optional<std::uint32_t> findApplication(const std::vector<CaptureTarget>& targets,
                                             const std::optional<std::string>& bundleID,
                                             const std::optional<std::string>& appName) {
    if (bundleID && !bundleID->empty()) {
        auto it = std::find_if(targets.begin(), targets.end(),
                               [&](const CaptureTarget& t) { return t.bundleId == *bundleID; });
        if (it != targets.end())
            return it->id;
    }
    if (appName && !appName->empty()) {
        auto it = std::find_if(targets.begin(), targets.end(),
                               [&](const CaptureTarget& t) { return t.appName == *appName; });
        if (it != targets.end())
            return it->id;
    }
    return std::nullopt;
}

std::optional<std::uint32_t> keptSelection(const std::vector<CaptureTarget>& targets,
                                           std::optional<std::uint32_t> selected) {
    if (!selected)
        return std::nullopt;
    const bool listed = std::any_of(targets.begin(), targets.end(),
                                    [&](const CaptureTarget& t) { return t.id == *selected; });
    return listed ? selected : std::nullopt;
}

}  // namespace zd::SourceSelection
