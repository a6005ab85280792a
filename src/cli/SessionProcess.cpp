#include "SessionProcess.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>

#include "linux/SpawnArguments.h"

extern char** environ;

namespace zd::cli {

Expected<SessionProcess, std::string> SessionProcess::start(
    const std::vector<std::string>& arguments) {
    std::array<int, 2> out{-1, -1};
    std::array<int, 2> err{-1, -1};
    if (pipe2(out.data(), O_CLOEXEC) != 0 || pipe2(err.data(), O_CLOEXEC) != 0) {
        for (int fd : {out[0], out[1], err[0], err[1]})
            if (fd >= 0)
                close(fd);
        return unexpected("cannot make a pipe: " + std::string(std::strerror(errno)));
    }
    std::vector<std::string> words = arguments;
    std::vector<char*> argv = x11::spawnArray(words);
    const pid_t parent = getpid();
    // fork and exec by hand: posix_spawn can't ask for the parent-death signal. Between the
    // two the child only makes async-signal-safe calls.
    const pid_t pid = fork();
    if (pid == 0) {
        prctl(PR_SET_PDEATHSIG, SIGTERM);
        if (getppid() != parent)
            _exit(127);
        setpgid(0, 0);
        // The run's own handlers don't pass on: the session starts with the defaults.
        struct sigaction defaults {};
        defaults.sa_handler = SIG_DFL;
        sigemptyset(&defaults.sa_mask);
        for (int signal = 1; signal < NSIG; ++signal)
            sigaction(signal, &defaults, nullptr);
        const int in = open("/dev/null", O_RDONLY);
        if (in < 0)
            _exit(127);
        dup2(in, STDIN_FILENO);
        dup2(out[1], STDOUT_FILENO);
        dup2(err[1], STDERR_FILENO);
        close_range(STDERR_FILENO + 1, ~0U, 0);
        execve(argv[0], argv.data(), environ);
        _exit(127);
    }
    const int error = errno;
    close(out[1]);
    close(err[1]);
    if (pid < 0) {
        close(out[0]);
        close(err[0]);
        return unexpected("cannot start a session: " + std::string(std::strerror(error)));
    }
    setpgid(pid, pid);
    fcntl(out[0], F_SETFL, O_NONBLOCK);
    fcntl(err[0], F_SETFL, O_NONBLOCK);
    return SessionProcess(pid, out[0], err[0]);
}

SessionProcess::SessionProcess(pid_t pid, int out, int err) : pid_(pid) {
    out_.fd = out;
    err_.fd = err;
}

SessionProcess::SessionProcess(SessionProcess&& other) noexcept
    : pid_(other.pid_),
      out_(std::move(other.out_)),
      err_(std::move(other.err_)),
      exitCode_(other.exitCode_) {
    other.pid_ = 0;
    other.out_.fd = -1;
    other.err_.fd = -1;
}

SessionProcess::~SessionProcess() {
    if (pid_ > 0 && !exitCode_) {
        ::kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
    }
    for (int fd : {out_.fd, err_.fd})
        if (fd >= 0)
            close(fd);
}

std::vector<int> SessionProcess::descriptors() const {
    std::vector<int> open;
    for (int fd : {out_.fd, err_.fd})
        if (fd >= 0)
            open.push_back(fd);
    return open;
}

void SessionProcess::readFrom(Stream& stream, bool toEnd) {
    std::array<char, 4096> buffer{};
    while (stream.fd >= 0) {
        const ssize_t n = ::read(stream.fd, buffer.data(), buffer.size());
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0 && errno == EAGAIN && !toEnd)
            break;
        if (n <= 0) {
            // The writer closed it, or, once the process has ended, whatever is left of it is
            // held by a program the session started and isn't ours to wait for.
            close(stream.fd);
            stream.fd = -1;
            break;
        }
        stream.pending.append(buffer.data(), static_cast<std::size_t>(n));
    }
    for (auto newline = stream.pending.find('\n'); newline != std::string::npos;
         newline = stream.pending.find('\n')) {
        stream.lines.push_back(stream.pending.substr(0, newline));
        stream.pending.erase(0, newline + 1);
    }
    if (stream.fd < 0 && !stream.pending.empty()) {
        stream.lines.push_back(stream.pending);
        stream.pending.clear();
    }
}

void SessionProcess::read() {
    readFrom(out_, exitCode_.has_value());
    readFrom(err_, exitCode_.has_value());
}

std::vector<std::string> SessionProcess::take(Stream& stream) {
    std::vector<std::string> lines;
    lines.swap(stream.lines);
    return lines;
}

std::optional<int> SessionProcess::poll() {
    if (exitCode_ || pid_ <= 0)
        return exitCode_;
    int status = 0;
    if (waitpid(pid_, &status, WNOHANG) != pid_)
        return std::nullopt;
    exitCode_ = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    read();  // what it wrote last
    return exitCode_;
}

void SessionProcess::stop() {
    if (pid_ > 0 && !exitCode_)
        ::kill(pid_, SIGTERM);
}

void SessionProcess::kill() {
    if (pid_ > 0 && !exitCode_)
        ::kill(pid_, SIGKILL);
}

}  // namespace zd::cli
