#include "TargetLauncher.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

#include <signal.h>

#include <algorithm>
#include <cstring>
#include <set>
#include <thread>

#include "OffscreenGui.h"
#include "linux/SpawnArguments.h"
#include "ui/ContentView.h"

namespace zd::cli {

Expected<TargetLauncher, std::string> TargetLauncher::start(
    const std::string& command, const std::vector<std::string>& environment) {
    // "exec" so the shell becomes the program and the pid is the program's own.
    std::vector<std::string> words{"/bin/sh", "-c", "exec " + command};
    std::vector<char*> argv = x11::spawnArray(words);
    std::vector<std::string> variables = environment;
    std::vector<char*> envp = x11::spawnArray(variables);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addclosefrom_np(&actions, 3);
    // A group of its own, so whatever the command starts can be ended with it.
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
    posix_spawnattr_setpgroup(&attributes, 0);
    pid_t pid = 0;
    const int error = posix_spawn(&pid, argv[0], &actions, &attributes, argv.data(), envp.data());
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0)
        return unexpected("cannot start \"" + command + "\": " + std::strerror(error));
    return TargetLauncher(pid, command);
}

Expected<void, std::string> TargetLauncher::selectFirstWindow(
    ContentView& view, const std::function<bool()>& stopped,
    const std::function<bool()>& displayAnswers, std::chrono::seconds limit) {
    view.reloadTargets();
    std::set<std::uint32_t> before;
    for (const auto& target : view.targets)
        before.insert(target.id);

    bool ended = false;
    bool displayGone = false;
    int status = 0;
    auto nextLook = std::chrono::steady_clock::now();
    auto found = [&] {
        if (stopped())
            return true;
        if (std::chrono::steady_clock::now() < nextLook)
            return false;
        nextLook = std::chrono::steady_clock::now() + std::chrono::milliseconds(200);
        if (!displayAnswers())
            return displayGone = true;
        if (!ended && waitpid(pid_, &status, WNOHANG) == pid_)
            ended = true;
        view.reloadTargets();
        for (const auto& target : view.targets) {
            if (target.pid == pid_ || (ended && before.count(target.id) == 0)) {
                view.selectedTargetID = target.id;
                return true;
            }
        }
        // A program that failed leaves no window to wait for.
        return ended && WIFEXITED(status) && WEXITSTATUS(status) != 0;
    };
    const bool done = processEventsUntil(found, limit);
    if (stopped())
        return unexpected(std::string("stopped while waiting for a window"));
    if (view.selectedTargetID)
        return {};
    if (displayGone)
        return unexpected(std::string("the display stopped answering while waiting for a window"));
    if (!done) {
        return unexpected("\"" + command_ + "\" showed no window within " +
                          std::to_string(limit.count()) + " seconds");
    }
    return unexpected("\"" + command_ + "\" ended (exit status " +
                      std::to_string(WEXITSTATUS(status)) + ") without a window");
}

void TargetLauncher::end() {
    if (pid_ <= 0)
        return;
    ::kill(-pid_, SIGTERM);
    ::kill(pid_, SIGTERM);
    const auto grace = std::chrono::steady_clock::now() + std::chrono::seconds(3);
    while (waitpid(pid_, nullptr, WNOHANG) == 0) {
        if (std::chrono::steady_clock::now() > grace) {
            ::kill(-pid_, SIGKILL);
            ::kill(pid_, SIGKILL);
            waitpid(pid_, nullptr, 0);
            break;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    ::kill(-pid_, SIGKILL);  // what the program left behind in its group
    pid_ = 0;
}

}  // namespace zd::cli
