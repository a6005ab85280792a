#pragma once
// Running applications through NSRunningApplication, starts through NSWorkspace.

#include "env/ProcessBackend.h"

namespace zd::mac {

class MacProcessBackend : public ProcessBackend {
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
    std::int32_t currentProcessId() const override;
};

}  // namespace zd::mac
