// The process stamp on Linux: the boot's id and the process's start time since boot, from
// /proc.

#include <fstream>
#include <sstream>

#include "common/ProcessStamp.h"

namespace zd {

namespace {

std::optional<std::string> contentsOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return std::nullopt;
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

}  // namespace

std::optional<std::string> processStamp(std::int32_t pid) {
    const auto stat = contentsOf("/proc/" + std::to_string(pid) + "/stat");
    static const std::string boot =
        contentsOf("/proc/sys/kernel/random/boot_id").value_or("unknown-boot");
    if (!stat)
        return std::nullopt;
    // After the command's name in parentheses (which may hold anything): the state, then
    // fields 4 to 21; the start time since boot is field 22.
    const auto close = stat->rfind(')');
    if (close == std::string::npos)
        return std::nullopt;
    std::istringstream fields(stat->substr(close + 1));
    std::string state;
    fields >> state;
    if (state == "Z" || state == "X")
        return std::nullopt;  // ended; only waits to be collected
    std::string field;
    for (int i = 4; i <= 22 && fields >> field; ++i) {
    }
    if (!fields)
        return std::nullopt;
    std::string bootID = boot;
    while (!bootID.empty() && (bootID.back() == '\n' || bootID.back() == ' '))
        bootID.pop_back();
    return bootID + ":" + field;
}

}  // namespace zd
