#include "ToolRunner.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <thread>

#include "SpawnArguments.h"

extern char** environ;

namespace zd::x11 {

namespace {

int waitForExit(pid_t pid) {
    int status = 0;
    while (waitpid(pid, &status, 0) < 0) {
        if (errno != EINTR)
            return -1;
    }
    if (WIFEXITED(status))
        return WEXITSTATUS(status);
    return 128 + (WIFSIGNALED(status) ? WTERMSIG(status) : 0);
}

}  // namespace

std::optional<ToolResult> runTool(const std::vector<std::string>& argv) {
    if (argv.empty())
        return std::nullopt;
    int fds[2];
    if (pipe2(fds, O_CLOEXEC) != 0)
        return std::nullopt;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, fds[1], STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
    std::vector<std::string> args = argv;
    auto pointers = spawnArray(args);
    pid_t pid = 0;
    const int error = posix_spawnp(&pid, pointers[0], &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(fds[1]);
    if (error != 0) {
        close(fds[0]);
        return std::nullopt;
    }
    ToolResult result;
    char buffer[4096];
    for (;;) {
        const ssize_t n = read(fds[0], buffer, sizeof buffer);
        if (n > 0) {
            result.standardOutput.append(buffer, static_cast<std::size_t>(n));
        } else if (n == 0 || errno != EINTR) {
            break;
        }
    }
    close(fds[0]);
    result.exitStatus = waitForExit(pid);
    return result;
}

Expected<pid_t, std::string> spawnDetached(const SpawnRequest& request) {
    if (request.argv.empty())
        return unexpected(std::string("nothing to start"));
    std::vector<std::string> args = request.argv;
    std::vector<std::string> env = request.environment;
    auto argPointers = spawnArray(args);
    auto envPointers = spawnArray(env);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    // Nothing of this program's own: a caller reading our output to its end (a command
    // substitution, a pipe) mustn't wait for the application to quit, and the application's
    // warnings are not ours to print.
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
    if (!request.workingDirectory.empty()) {
        posix_spawn_file_actions_addchdir_np(&actions, request.workingDirectory.c_str());
    }
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    // Its own process group, so signals meant for this program don't reach it.
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
    posix_spawnattr_setpgroup(&attributes, 0);
    pid_t pid = 0;
    const int error = posix_spawnp(&pid, argPointers[0], &actions, &attributes, argPointers.data(),
                                   envPointers.data());
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0)
        return unexpected(std::string(std::strerror(error)));
    std::thread([pid] { waitForExit(pid); }).detach();
    return pid;
}

std::vector<std::string> environmentWith(
    const std::vector<std::pair<std::string, std::string>>& overrides) {
    std::vector<std::string> env;
    for (char** entry = environ; entry && *entry; ++entry) {
        const std::string text(*entry);
        const std::string name = text.substr(0, text.find('='));
        bool replaced = false;
        for (const auto& [overrideName, value] : overrides)
            replaced |= overrideName == name;
        if (!replaced)
            env.push_back(text);
    }
    for (const auto& [name, value] : overrides)
        env.push_back(name + "=" + value);
    return env;
}

}  // namespace zd::x11
