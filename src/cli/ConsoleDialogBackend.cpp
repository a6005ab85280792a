#include "ConsoleDialogBackend.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

#include <thread>

extern char** environ;

namespace zd::cli {

std::optional<std::string> ConsoleDialogBackend::chooseFolder(const std::string&) {
    return std::nullopt;  // nobody to ask; the command checks for a folder before the run
}

void ConsoleDialogBackend::showAlert(const std::string& messageText,
                                     const std::string& informativeText, AlertStyle,
                                     const std::vector<std::string>&) {
    err_ << messageText << "\n";
    if (!informativeText.empty())
        err_ << informativeText << "\n";
}

void ConsoleDialogBackend::revealFolder(const std::string& path) {
    if (!revealFolders_)
        return;
    // Detached and silent: the file manager's own output is none of this command's, and it
    // may live on after the command has ended.
    std::string program = "xdg-open";
    std::string folder = path;
    char* argv[] = {program.data(), folder.data(), nullptr};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    for (int fd : {0, 1, 2})
        posix_spawn_file_actions_addopen(&actions, fd, "/dev/null", fd == 0 ? O_RDONLY : O_WRONLY,
                                         0);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);  // Ctrl-C is not its business
    pid_t pid = 0;
    const int error = posix_spawnp(&pid, "xdg-open", &actions, &attributes, argv, environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) {
        err_ << "zephyrdock: cannot show " << path << ": xdg-open is not available\n";
        return;
    }
    std::thread([pid] { waitpid(pid, nullptr, 0); }).detach();
}

}  // namespace zd::cli
