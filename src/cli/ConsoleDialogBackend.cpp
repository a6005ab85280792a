#include "ConsoleDialogBackend.h"

#include <spawn.h>
#include <sys/wait.h>

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
    std::string program = "xdg-open";
    std::string folder = path;
    char* argv[] = {program.data(), folder.data(), nullptr};
    pid_t pid = 0;
    if (posix_spawnp(&pid, "xdg-open", nullptr, nullptr, argv, environ) != 0) {
        err_ << "zephyrdock: cannot show " << path << ": xdg-open is not available\n";
        return;
    }
    waitpid(pid, nullptr, 0);  // xdg-open hands the folder over and ends at once
}

}  // namespace zd::cli
