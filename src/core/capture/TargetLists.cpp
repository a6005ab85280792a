#include "capture/TargetLists.h"

#include <algorithm>
#include <map>
#include <set>

#include "capture/RunningApps.h"
#include "capture/Spaces.h"
#include "capture/WindowRecord.h"
#include "env/Environment.h"
#include "env/ProcessBackend.h"
#include "env/WindowListBackend.h"

namespace zd::TargetLists {

namespace {

bool onSpace(const Environment& env, std::uint32_t windowID, std::uint64_t spaceID) {
    if (!env.spaces)
        return false;
    auto ids = Spaces::spaceIDs(*env.spaces, windowID);
    return std::find(ids.begin(), ids.end(), spaceID) != ids.end();
}

bool sameApplication(const CaptureTarget& a, const CaptureTarget& b) {
    return (a.bundleId && b.bundleId && *a.bundleId == *b.bundleId) || a.appName == b.appName;
}

}  // namespace

void reloadTargets(const Environment& env, std::uint64_t selectedSpaceID,
                   std::vector<CaptureTarget>& targets,
                   std::optional<std::uint32_t>& selectedTargetID) {
    std::optional<CaptureTarget> previous = selectedTarget(targets, selectedTargetID);
    auto fresh = RunningApps::currentTargets(env);
    if (selectedSpaceID != 0) {
        std::erase_if(fresh,
                      [&](const CaptureTarget& t) { return !onSpace(env, t.id, selectedSpaceID); });
    }
    targets = std::move(fresh);
    if (!selectedTargetID || selectedTarget(targets, selectedTargetID))
        return;
    if (previous) {
        auto same = std::find_if(targets.begin(), targets.end(), [&](const CaptureTarget& t) {
            return sameApplication(*previous, t);
        });
        if (same != targets.end()) {
            selectedTargetID = same->id;
            return;
        }
    }
    selectedTargetID.reset();
}

std::optional<CaptureTarget> selectedTarget(const std::vector<CaptureTarget>& targets,
                                            std::optional<std::uint32_t> selectedTargetID) {
    if (!selectedTargetID)
        return std::nullopt;
    auto it = std::find_if(targets.begin(), targets.end(),
                           [&](const CaptureTarget& t) { return t.id == *selectedTargetID; });
    if (it == targets.end())
        return std::nullopt;
    return *it;
}

std::vector<CompositeEntry> freshCompositeRows(const Environment& env,
                                               std::uint64_t selectedSpaceID) {
    std::vector<CompositeEntry> rows;
    if (!env.windowList || !env.processes)
        return rows;
    Value list = env.windowList->windowList(WindowListOption::allWindows);
    const ValueArray* entries = list.asArray();
    if (!entries || !std::all_of(entries->begin(), entries->end(),
                                 [](const Value& e) { return e.isDictionary(); })) {
        return rows;
    }
    const std::int32_t ownPid = env.processes->currentProcessId();
    for (const Value& entry : *entries) {
        auto layer = WindowRecord::layer(entry);
        if (!layer || !WindowRecord::isOrdinaryLayer(*layer))
            continue;
        auto pid = WindowRecord::ownerPID(entry);
        if (!pid || *pid == ownPid)
            continue;
        auto number = WindowRecord::number(entry);
        if (!number)
            continue;
        auto owner = WindowRecord::ownerName(entry);
        if (!owner)
            continue;
        auto app = env.processes->runningApplication(*pid);
        if (!app || app->activationPolicy != ActivationPolicy::regular)
            continue;
        if (!WindowRecord::passesSize(entry, 50, 50))
            continue;
        if (selectedSpaceID != 0 && !onSpace(env, *number, selectedSpaceID))
            continue;
        rows.push_back(CompositeEntry{*number, *owner, WindowRecord::name(entry), true});
    }
    return rows;
}

std::vector<CompositeEntry> mergeCompositeRows(const std::vector<CompositeEntry>& present,
                                               const std::vector<CompositeEntry>& fresh) {
    std::map<std::uint32_t, const CompositeEntry*> index;
    for (const auto& row : fresh)
        index.emplace(row.id, &row);
    std::vector<CompositeEntry> merged;
    std::set<std::uint32_t> kept;
    for (const auto& row : present) {
        auto it = index.find(row.id);
        if (it == index.end())
            continue;
        merged.push_back(
            CompositeEntry{row.id, it->second->appName, it->second->title, row.enabled});
        kept.insert(row.id);
    }
    for (const auto& row : fresh) {
        if (!kept.contains(row.id))
            merged.push_back(row);
    }
    return merged;
}

void reloadCompositeWindows(const Environment& env, std::uint64_t selectedSpaceID,
                            std::vector<CompositeEntry>& compositeWindows) {
    compositeWindows =
        mergeCompositeRows(compositeWindows, freshCompositeRows(env, selectedSpaceID));
}

}  // namespace zd::TargetLists
