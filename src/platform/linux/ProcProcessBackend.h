#pragma once
// Running applications on Linux, read from /proc: an application is a process of this user
// with a readable executable. Its identity is the desktop-file id (from the variable GIO sets
// when it launches one, or the desktop file whose command starts the executable), else the
// window class of its windows when a lookup for that is given. Ending is SIGTERM, then
// SIGKILL; starting is posix_spawn with the command line last seen for that identity.

#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "DesktopEntries.h"
#include "X11ProcessWindows.h"
#include "env/ProcessBackend.h"

namespace zd::x11 {

class ProcProcessBackend : public ProcessBackend {
  public:
    struct Options {
        std::string procRoot = "/proc";
        // The WM_CLASS (class part) of every process's windows, by pid; used where no desktop
        // file names the program. By default asked of the X display.
        std::function<std::map<std::int32_t, std::string>()> windowClasses = windowClassesByPid;
        // Whether each process with windows has one in the task bar; a process without is an
        // accessory, as a macOS agent is. By default asked of the X display.
        std::function<std::map<std::int32_t, bool>()> taskbarPresence = taskbarPresenceByPid;
        // Raises the process's windows; by default through _NET_ACTIVE_WINDOW.
        std::function<bool(std::int32_t pid)> activateWindows = activateWindowsOf;
        // When set, only processes whose DISPLAY is this one are applications: those of this
        // desktop, not of another session of the same user.
        std::string display;
        // Folders holding "applications/"; empty for the XDG defaults.
        std::vector<std::filesystem::path> dataDirs;
    };

    ProcProcessBackend() : ProcProcessBackend(Options{}) {}
    explicit ProcProcessBackend(Options options);

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

  private:
    // How an identity was last seen running, so it can be started the same way.
    struct CommandLine {
        std::string executable;
        std::vector<std::string> arguments;
        std::string workingDirectory;
        // Its Qt platform theme, which decides whether a Qt application follows Dark.
        std::string qtPlatformTheme;
    };

    // `windowClasses` null: asked for when needed.
    std::optional<RunningApplication> read(
        std::int32_t pid, const std::map<std::int32_t, std::string>* windowClasses) const;
    std::optional<DesktopEntry> entryFor(const RunningApplication& app) const;
    std::optional<Image> iconFor(const DesktopEntry& entry) const;

    Options options_;
    DesktopEntries entries_;
    std::optional<long long> bootTime_;  // seconds since the epoch; the machine's, read once
    mutable std::mutex mutex_;           // guards the caches below; lookups may come from workers
    mutable std::map<std::string, CommandLine> lastSeen_;
    mutable std::map<std::string, std::optional<Image>> icons_;
};

}  // namespace zd::x11
