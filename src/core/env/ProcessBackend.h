#pragma once
// Running applications: look them up, bring them forward, end them, start them.
// On macOS this is NSRunningApplication and NSWorkspace; on Linux /proc, signals and
// posix_spawn. An application's identity is what macOS calls its bundle identifier; on Linux
// it is the desktop-file id or the window class, resolved through /proc.

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "model/Expected.h"
#include "model/Image.h"

namespace zd {

// How an application takes part in the desktop (macOS raw values).
enum class ActivationPolicy : int {
    regular = 0,     // an ordinary application with windows, in the dock or task bar
    accessory = 1,   // windows of its own but no place in the dock
    prohibited = 2,  // no user interface
};

// One running process of an application, as the system sees it at the moment of the lookup.
struct RunningApplication {
    std::int32_t pid = 0;
    // The application's identity; none when the system can't tell one.
    std::optional<std::string> bundleIdentifier;
    std::string localizedName;
    // Path of the executable; empty when it can't be read.
    std::string executable;
    // The process's own command line, the program name first.
    std::vector<std::string> arguments;
    // The process's environment as "NAME=value" entries; empty when it can't be read.
    std::vector<std::string> environment;
    // None when the system doesn't know it.
    std::optional<std::chrono::system_clock::time_point> launchDate;
    std::optional<Image> icon;
    ActivationPolicy activationPolicy = ActivationPolicy::regular;
    // True for a process that has ended but is still listed (a zombie, on Linux).
    bool isTerminated = false;
};

// Extra settings for one start of an application.
struct LaunchRequest {
    // The application's location, from `applicationLocation`.
    std::string location;
    // Arguments after the application's own.
    std::vector<std::string> arguments;
    // Variables set (or replaced) in the new process's environment.
    std::vector<std::pair<std::string, std::string>> environment;
    // Bring the new instance to the front.
    bool activates = true;
    // Start another instance even if one runs already.
    bool createsNewInstance = true;
};

class ProcessBackend {
  public:
    virtual ~ProcessBackend() = default;

    // The application running as `pid`; none if there is no such process or it isn't an
    // application the system knows.
    virtual std::optional<RunningApplication> runningApplication(std::int32_t pid) const = 0;
    // Every running instance of an application, in the system's order.
    virtual std::vector<RunningApplication> runningApplications(
        const std::string& bundleIdentifier) const = 0;

    // Raises the application's windows and gives it the focus. False if it can't be done.
    virtual bool activate(std::int32_t pid) = 0;
    // Polite request to quit (SIGTERM on Linux). False if nothing could be sent.
    virtual bool terminate(std::int32_t pid) = 0;
    // Ends the process at once (SIGKILL on Linux). False if nothing could be sent.
    virtual bool forceTerminate(std::int32_t pid) = 0;

    // Where the application lives, in a form `launch` takes; none if it can't be found.
    virtual std::optional<std::string> applicationLocation(
        const std::string& bundleIdentifier) const = 0;
    // Starts the application and waits until the start itself is done (not for a window).
    // Blocks its thread. Gives the new process id when the system tells it (0 when it
    // doesn't), or the system's description of why the start failed.
    virtual Expected<std::int32_t, std::string> launch(const LaunchRequest& request) = 0;

    // This program's own process id.
    virtual std::int32_t currentProcessId() const = 0;
};

}  // namespace zd
