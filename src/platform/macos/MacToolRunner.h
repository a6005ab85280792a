#pragma once
// Runs a system tool by absolute path with an argument list, standard output and standard
// error each in a pipe of its own, and waits for its end.

#include <optional>
#include <string>
#include <vector>

#include "env/ToolResult.h"

namespace zd::mac {

// None when the tool couldn't be started. Standard error is drained but never read.
std::optional<ToolResult> runTool(const std::string& path,
                                  const std::vector<std::string>& arguments);

}  // namespace zd::mac
