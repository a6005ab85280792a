#pragma once
// What tells the process now running as a pid apart from any other that had or will have the
// same pid: each platform defines it from its own process table (the Linux edition from /proc,
// the macOS one from the kernel's process information). None when no process runs as `pid`,
// or only one that has ended and waits to be collected.

#include <cstdint>
#include <optional>
#include <string>

namespace zd {

std::optional<std::string> processStamp(std::int32_t pid);

}  // namespace zd
