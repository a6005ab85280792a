#pragma once
// A scripted table of running applications. Terminating removes an application unless it
// refuses to quit; force-terminating always does. Launches are recorded and answered by a
// script. Every call that changes something is written to `calls` (and to `log` if set, so a
// test can interleave it with the clock's waits).

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "env/ProcessBackend.h"

namespace zd::testing {

class FakeProcessBackend : public ProcessBackend {
  public:
    std::optional<RunningApplication> runningApplication(std::int32_t pid) const override;
    std::vector<RunningApplication> runningApplications(
        const std::string& bundleIdentifier) const override;
    bool activate(std::int32_t pid) override;
    bool terminate(std::int32_t pid) override;
    bool forceTerminate(std::int32_t pid) override;
    std::optional<std::string> applicationLocation(
        const std::string& bundleIdentifier) const override;
    Expected<std::int32_t, std::string> launch(const LaunchRequest& request) override;
    std::int32_t currentProcessId() const override { return ownPid; }

    // Adds (or replaces) a running application.
    void add(RunningApplication app) { apps[app.pid] = std::move(app); }

    std::map<std::int32_t, RunningApplication> apps;
    // Processes that ignore `terminate`.
    std::set<std::int32_t> refusesToQuit;
    // Locations by identity; an identity missing here isn't found on disk.
    std::map<std::string, std::string> locations;
    // Answers a launch; by default starts nothing and gives pid 0.
    std::function<Expected<std::int32_t, std::string>(const LaunchRequest&)> onLaunch;
    std::vector<LaunchRequest> launches;
    std::int32_t ownPid = 1;

    std::vector<std::string> calls;
    std::vector<std::string>* log = nullptr;

  private:
    void record(std::string call);
};

}  // namespace zd::testing
