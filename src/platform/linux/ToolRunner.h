#pragma once
// Starting other programs without a shell: a helper tool whose exit status and standard output
// are wanted (gsettings), and an application that runs on by itself. Children are reaped, so
// an ended application never lingers as a zombie.

#include <sys/types.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "env/ToolResult.h"
#include "model/Expected.h"

namespace zd::x11 {

// Runs `argv` (argv[0] looked up in PATH) with standard output in a pipe and standard error
// discarded, and waits for it. None when it couldn't be started.
std::optional<ToolResult> runTool(const std::vector<std::string>& argv);

struct SpawnRequest {
    std::vector<std::string> argv;         // argv[0] is a path, or a name looked up in PATH
    std::vector<std::string> environment;  // "NAME=value"
    std::string workingDirectory;          // empty: this process's own
};

// Starts a process that outlives the call, detached from this one: its standard streams on
// /dev/null, no other descriptor of ours, a process group of its own. A thread waits for its
// end so it is reaped.
// The pid, or the system's description of why it couldn't start.
Expected<pid_t, std::string> spawnDetached(const SpawnRequest& request);

// This process's environment with `overrides` set (replacing entries of the same name).
std::vector<std::string> environmentWith(
    const std::vector<std::pair<std::string, std::string>>& overrides);

}  // namespace zd::x11
