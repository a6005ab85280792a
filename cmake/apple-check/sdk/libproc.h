// The process information calls of Darwin's libproc (and the record of sys/proc_info.h they
// fill), which glibc lacks. Transcribed from Apple's open-source headers for the Apple-target
// check only; the rules of ZdFoundationSdk.h apply.
#pragma once

#include <stdint.h>
#include <sys/types.h>

extern "C" {

// opensource.apple.com/source/xnu/xnu-4903.221.2/bsd/sys/param.h
#ifndef MAXCOMLEN
#define MAXCOMLEN 16
#endif

// opensource.apple.com/source/xnu/xnu-4903.221.2/bsd/sys/proc_info.h
#define PROC_PIDTBSDINFO 3
struct proc_bsdinfo {
    uint32_t pbi_flags;
    uint32_t pbi_status;
    uint32_t pbi_xstatus;
    uint32_t pbi_pid;
    uint32_t pbi_ppid;
    uid_t pbi_uid;
    gid_t pbi_gid;
    uid_t pbi_ruid;
    gid_t pbi_rgid;
    uid_t pbi_svuid;
    gid_t pbi_svgid;
    uint32_t rfu_1;
    char pbi_comm[MAXCOMLEN];
    char pbi_name[2 * MAXCOMLEN];
    uint32_t pbi_nfiles;
    uint32_t pbi_pgid;
    uint32_t pbi_pjobc;
    uint32_t e_tdev;
    uint32_t e_tpgid;
    int32_t pbi_nice;
    uint64_t pbi_start_tvsec;
    uint64_t pbi_start_tvusec;
};

// opensource.apple.com/source/Libc/Libc-583/darwin/libproc.h
// Returns the bytes written into `buffer`, 0 on failure (errno set).
int proc_pidinfo(int pid, int flavor, uint64_t arg, void* buffer, int buffersize);

}  // extern "C"
