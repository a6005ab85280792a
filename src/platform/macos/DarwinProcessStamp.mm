// The process stamp on macOS: the process's start time from the kernel's process information,
// to the microsecond. It is wall-clock time, so unlike Linux's time since boot it needs no
// boot identity beside it.

#include "common/ProcessStamp.h"

#include <libproc.h>
#include <sys/proc.h>

namespace zd {

std::optional<std::string> processStamp(std::int32_t pid) {
    if (pid <= 0)
        return std::nullopt;
    struct proc_bsdinfo info {};
    const int size = static_cast<int>(sizeof info);
    if (proc_pidinfo(pid, PROC_PIDTBSDINFO, 0, &info, size) != size || info.pbi_status == SZOMB)
        return std::nullopt;
    return std::to_string(info.pbi_start_tvsec) + "." + std::to_string(info.pbi_start_tvusec);
}

}  // namespace zd
