#pragma once
// What a helper tool left behind: its exit status and its standard output, as raw as the
// tool gave them, so the rules for reading them stay in the core.

#include <string>

namespace zd {

struct ToolResult {
    int exitStatus = 0;
    // The bytes of standard output; not necessarily valid UTF-8.
    std::string standardOutput;
};

}  // namespace zd
