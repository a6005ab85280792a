#include "testing/FakeProcessBackend.h"

namespace zd::testing {

void FakeProcessBackend::record(std::string call) {
    if (log)
        log->push_back(call);
    calls.push_back(std::move(call));
}

std::optional<RunningApplication> FakeProcessBackend::runningApplication(std::int32_t pid) const {
    auto it = apps.find(pid);
    if (it == apps.end())
        return std::nullopt;
    return it->second;
}

std::vector<RunningApplication> FakeProcessBackend::runningApplications(
    const std::string& bundleIdentifier) const {
    std::vector<RunningApplication> found;
    for (const auto& [pid, app] : apps) {
        if (app.bundleIdentifier == bundleIdentifier)
            found.push_back(app);
    }
    return found;
}

bool FakeProcessBackend::activate(std::int32_t pid) {
    record("activate " + std::to_string(pid));
    return apps.count(pid) > 0;
}

bool FakeProcessBackend::terminate(std::int32_t pid) {
    record("terminate " + std::to_string(pid));
    if (!apps.count(pid))
        return false;
    if (!refusesToQuit.count(pid))
        apps.erase(pid);
    return true;
}

bool FakeProcessBackend::forceTerminate(std::int32_t pid) {
    record("forceTerminate " + std::to_string(pid));
    return apps.erase(pid) > 0;
}

std::optional<std::string> FakeProcessBackend::applicationLocation(
    const std::string& bundleIdentifier) const {
    auto it = locations.find(bundleIdentifier);
    if (it == locations.end())
        return std::nullopt;
    return it->second;
}

Expected<std::int32_t, std::string> FakeProcessBackend::launch(const LaunchRequest& request) {
    std::string call = "launch " + request.location;
    for (const auto& argument : request.arguments)
        call += " " + argument;
    for (const auto& [name, value] : request.environment)
        call += " " + name + "=" + value;
    if (!request.activates)
        call += " (background)";
    record(std::move(call));
    launches.push_back(request);
    if (onLaunch)
        return onLaunch(request);
    return std::int32_t{0};
}

}  // namespace zd::testing
