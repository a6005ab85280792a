#pragma once
// Ctrl-C as the Stop button: while an instance lives, every catchable signal that would end
// the program (SIGINT, SIGTERM, SIGHUP when the terminal goes, SIGQUIT, …) only raises a flag,
// and the command's event loop, on the UI thread, sees it and stops the run there, so every
// way out passes through the same clean-up. SIGPIPE is ignored meanwhile: a reader that went
// away makes writes fail, not the run end half-way. The previous handlers come back when it
// goes. Instances may nest; they share the one flag.

#include <csignal>
#include <utility>
#include <vector>

namespace zd::cli {

class StopRequest {
  public:
    StopRequest();
    ~StopRequest();
    StopRequest(const StopRequest&) = delete;
    StopRequest& operator=(const StopRequest&) = delete;

    // True once a signal came since the last call.
    bool take();

  private:
    std::vector<std::pair<int, struct sigaction>> previous_;
};

}  // namespace zd::cli
