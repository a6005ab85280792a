#pragma once
// One session of a parallel run: a `zephyrdock` process of its own, its standard output and
// error read through pipes, line by line, without blocking. It is this process's child in a
// process group of its own (a Ctrl-C on the terminal reaches only the run, which stops every
// session itself) and gets SIGTERM should this process die. It is stopped and collected by its
// own pid; the object's end kills and collects one that still runs.

#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

#include "model/Expected.h"

namespace zd::cli {

class SessionProcess {
  public:
    // Starts `arguments` (the program first) with this process's environment.
    static Expected<SessionProcess, std::string> start(const std::vector<std::string>& arguments);
    SessionProcess(SessionProcess&& other) noexcept;
    SessionProcess& operator=(SessionProcess&&) = delete;
    SessionProcess(const SessionProcess&) = delete;
    SessionProcess& operator=(const SessionProcess&) = delete;
    ~SessionProcess();

    pid_t pid() const { return pid_; }
    // The descriptors to wait on (those still open).
    std::vector<int> descriptors() const;
    // Reads what is there; complete lines come out of takeOutputLines / takeErrorLines.
    void read();
    std::vector<std::string> takeOutputLines() { return take(out_); }
    std::vector<std::string> takeErrorLines() { return take(err_); }
    // Collects the process if it has ended: its exit code (128 + signal when killed).
    std::optional<int> poll();
    std::optional<int> exitCode() const { return exitCode_; }
    // SIGTERM: the session stops as with Ctrl-C and cleans up.
    void stop();
    // SIGKILL, for a session that didn't end after a stop.
    void kill();

  private:
    struct Stream {
        int fd = -1;
        std::string pending;
        std::vector<std::string> lines;
    };
    SessionProcess(pid_t pid, int out, int err);
    static std::vector<std::string> take(Stream& stream);
    static void readFrom(Stream& stream, bool toEnd);

    pid_t pid_ = 0;
    Stream out_;
    Stream err_;
    std::optional<int> exitCode_;
};

}  // namespace zd::cli
