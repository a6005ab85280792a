#include "StopRequest.h"

namespace zd::cli {

namespace {

volatile std::sig_atomic_t stopRequested = 0;

extern "C" void requestStop(int) {
    stopRequested = 1;  // nothing else is safe in a handler
}

}  // namespace

StopRequest::StopRequest() {
    struct sigaction action {};
    action.sa_handler = requestStop;
    sigemptyset(&action.sa_mask);
    sigaction(SIGINT, &action, &previousInterrupt_);
    sigaction(SIGTERM, &action, &previousTerminate_);
}

StopRequest::~StopRequest() {
    sigaction(SIGINT, &previousInterrupt_, nullptr);
    sigaction(SIGTERM, &previousTerminate_, nullptr);
}

bool StopRequest::take() {
    if (!stopRequested)
        return false;
    stopRequested = 0;
    return true;
}

}  // namespace zd::cli
