#pragma once
// Ctrl-C (and SIGTERM) as the Stop button: while an instance lives, the signal only raises a
// flag, and the command's event loop, on the UI thread, sees it and stops the run there. The
// previous handlers come back when it goes. Instances may nest; they share the one flag.

#include <csignal>

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
    struct sigaction previousInterrupt_ {};
    struct sigaction previousTerminate_ {};
};

}  // namespace zd::cli
