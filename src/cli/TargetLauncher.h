#pragma once
// `shoot --launch "COMMAND"`: starts a program on the run's display through the shell and
// waits for its first window to become a target.

#include <chrono>
#include <functional>
#include <string>
#include <vector>

#include "model/Expected.h"

namespace zd {
class ContentView;
}

namespace zd::cli {

class TargetLauncher {
  public:
    // Starts `command` with `environment` (its output discarded). The text says why it
    // couldn't.
    static Expected<TargetLauncher, std::string> start(const std::string& command,
                                                       const std::vector<std::string>& environment);

    // Reloads the view's targets until one belongs to the started process (or, when that
    // process handed over to another and ended, until a window appears that wasn't there
    // before) and selects it. The text says why none came: the wait timed out, `stopped`
    // said so, the display stopped answering, or the program ended without a window.
    Expected<void, std::string> selectFirstWindow(ContentView& view,
                                                  const std::function<bool()>& stopped,
                                                  const std::function<bool()>& displayAnswers,
                                                  std::chrono::seconds limit);

    // Ends the started program and whatever it started in its group: SIGTERM, then SIGKILL
    // after a short grace; collects it.
    void end();

    int pid() const { return pid_; }

  private:
    TargetLauncher(int pid, std::string command) : pid_(pid), command_(std::move(command)) {}
    int pid_;
    std::string command_;
};

}  // namespace zd::cli
