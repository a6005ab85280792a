#include "StopRequest.h"

namespace zd::cli {

namespace {

volatile std::sig_atomic_t stopRequested = 0;

extern "C" void requestStop(int) {
    stopRequested = 1;  // nothing else is safe in a handler
}

// The signals whose default is to end the process and that a process may catch; those that
// report a fault of the program itself (SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT) keep theirs.
constexpr int stopSignals[] = {SIGINT,  SIGTERM, SIGHUP,    SIGQUIT, SIGUSR1, SIGUSR2,
                               SIGALRM, SIGPROF, SIGVTALRM, SIGXCPU, SIGXFSZ};

}  // namespace

StopRequest::StopRequest() {
    struct sigaction action {};
    action.sa_handler = requestStop;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    for (int signal : stopSignals) {
        struct sigaction previous {};
        sigaction(signal, &action, &previous);
        previous_.emplace_back(signal, previous);
    }
    struct sigaction ignore {};
    ignore.sa_handler = SIG_IGN;
    sigemptyset(&ignore.sa_mask);
    struct sigaction previous {};
    sigaction(SIGPIPE, &ignore, &previous);
    previous_.emplace_back(SIGPIPE, previous);
}

StopRequest::~StopRequest() {
    for (auto it = previous_.rbegin(); it != previous_.rend(); ++it)
        sigaction(it->first, &it->second, nullptr);
}

bool StopRequest::take() {
    if (!stopRequested)
        return false;
    stopRequested = 0;
    return true;
}

}  // namespace zd::cli
