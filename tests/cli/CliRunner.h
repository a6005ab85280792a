#pragma once
// Runs the built `zephyrdock` in a process of its own, with a private config folder, and
// collects its exit code, stdout and stderr; programs started on their own, and waits.

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "linux/SpawnArguments.h"
#include "support/TemporaryFolder.h"

extern char** environ;

namespace zd::test {

struct CliResult {
    int exitCode = -1;
    std::string out;
    std::string err;
};

// The whole of a file, or nothing.
inline std::string read(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

// A program started on its own (found on the PATH), its stderr in a file.
struct Started {
    pid_t pid = 0;
    std::string errPath;
    std::string err() const { return read(errPath); }
    int wait() const {
        int status = 0;
        waitpid(pid, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }
};

inline Started start(std::vector<std::string> words, std::vector<std::string> environment,
                     const std::string& errPath, const std::string& outPath = "/dev/null") {
    std::vector<char*> argv = x11::spawnArray(words);
    std::vector<char*> envp = x11::spawnArray(environment);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, outPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC,
                                     0600);
    posix_spawn_file_actions_addopen(&actions, 2, errPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC,
                                     0600);
    Started started{0, errPath};
    if (posix_spawnp(&started.pid, argv[0], &actions, nullptr, argv.data(), envp.data()) != 0)
        started.pid = 0;
    posix_spawn_file_actions_destroy(&actions);
    return started;
}

// Runs a program (found on the PATH) to its end and gives what it wrote to stdout.
inline std::string outputOf(std::vector<std::string> words,
                            const std::vector<std::string>& environment) {
    TemporaryFolder folder;
    const auto out = (folder.path() / "out").string();
    start(std::move(words), environment, (folder.path() / "err").string(), out).wait();
    return read(out);
}

// The desktop's colour scheme, as gsettings reads it in `environment`.
inline std::string colorScheme(const std::vector<std::string>& environment) {
    return outputOf({"gsettings", "get", "org.gnome.desktop.interface", "color-scheme"},
                    environment);
}

// The words of `line`, split at its spaces: arguments that hold none, written as typed.
inline std::vector<std::string> words(const std::string& line) {
    std::vector<std::string> found;
    std::istringstream in(line);
    for (std::string word; in >> word;)
        found.push_back(word);
    return found;
}

// Polls `ready` every 50 ms until it holds or `limit` passed.
inline bool waitFor(const std::function<bool()>& ready, std::chrono::milliseconds limit) {
    for (const auto end = std::chrono::steady_clock::now() + limit;
         std::chrono::steady_clock::now() < end;
         std::this_thread::sleep_for(std::chrono::milliseconds(50))) {
        if (ready())
            return true;
    }
    return ready();
}

// Whether `pid` runs (exists and hasn't ended).
inline bool running(pid_t pid) {
    const std::string stat = read("/proc/" + std::to_string(pid) + "/stat");
    return !stat.empty() && stat.substr(stat.rfind(')') + 2, 1) != "Z";
}

// Every running process below `root` (sessions start their own groups, not their own trees),
// with its command line.
inline std::map<pid_t, std::string> descendantsOf(pid_t root) {
    std::multimap<pid_t, pid_t> children;
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        const std::string name = entry.path().filename().string();
        const std::string stat = read((entry.path() / "stat").string());
        const auto close = stat.rfind(')');
        if (name.find_first_not_of("0123456789") == std::string::npos &&
            close != std::string::npos && stat.substr(close + 2, 1) != "Z")
            children.emplace(std::stoi(stat.substr(close + 4)), std::stoi(name));
    }
    std::map<pid_t, std::string> found;
    for (std::vector<pid_t> open{root}; !open.empty();) {
        const pid_t next = open.back();
        open.pop_back();
        for (auto [it, end] = children.equal_range(next); it != end; ++it) {
            found[it->second] = read("/proc/" + std::to_string(it->second) + "/cmdline");
            open.push_back(it->second);
        }
    }
    return found;
}

// The display server among `processes`, or 0.
inline pid_t displayAmong(const std::map<pid_t, std::string>& processes) {
    for (const auto& [pid, command] : processes)
        if (command.rfind("Xvfb", 0) == 0)
            return pid;
    return 0;
}

class CliRunner {
  public:
    TemporaryFolder home;

    // The build's zephyrdock, beside the test programs.
    static std::string executable() { return ZD_BINARY_DIR "/bin/zephyrdock"; }
    std::string settingsPath() const {
        return (home.path() / "config/zephyrdock/settings.json").string();
    }

    // Runs with XDG_CONFIG_HOME, XDG_STATE_HOME and HOME inside the private folder, unless
    // `environment` replaces the whole environment.
    CliResult run(const std::vector<std::string>& arguments,
                  std::optional<std::vector<std::string>> environment = std::nullopt) const {
        std::vector<std::string> words{executable()};
        words.insert(words.end(), arguments.begin(), arguments.end());
        const auto outPath = (home.path() / "stdout.txt").string();
        const auto errPath = (home.path() / "stderr.txt").string();
        const Started started =
            start(words, environment ? *environment : inherited(), errPath, outPath);
        CliResult result;
        result.exitCode = started.pid > 0 ? started.wait() : -1;
        result.out = read(outPath);
        result.err = read(errPath);
        return result;
    }

    // This process's environment with the private folders in place of its own.
    std::vector<std::string> inherited() const {
        std::vector<std::string> variables;
        for (char** entry = environ; *entry; ++entry) {
            std::string variable(*entry);
            if (variable.rfind("XDG_CONFIG_HOME=", 0) == 0 ||
                variable.rfind("XDG_STATE_HOME=", 0) == 0 || variable.rfind("HOME=", 0) == 0) {
                continue;
            }
            variables.push_back(variable);
        }
        variables.push_back("XDG_CONFIG_HOME=" + (home.path() / "config").string());
        variables.push_back("XDG_STATE_HOME=" + (home.path() / "state").string());
        variables.push_back("HOME=" + home.path().string());
        return variables;
    }
};

}  // namespace zd::test
