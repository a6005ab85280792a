#pragma once
// Where the journal of a run's changes is kept, and the few process and file operations that
// putting back after a crash needs. On Linux: small files under $XDG_STATE_HOME, /proc and
// signals. What is recorded and what a later start decides from it is the core's.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace zd {

class RunJournalBackend {
  public:
    virtual ~RunJournalBackend() = default;

    // The names of the records kept, in any order.
    virtual std::vector<std::string> recordNames() const = 0;
    // A record's text; none when it is gone.
    virtual std::optional<std::string> readRecord(const std::string& name) const = 0;
    // Replaces the record whole: a crash mid-write leaves the old text or the new one. False
    // when it can't be written.
    virtual bool writeRecord(const std::string& name, const std::string& text) = 0;
    virtual void removeRecord(const std::string& name) = 0;

    // What tells the process now running as `pid` apart from any other that had or will have
    // the same pid (on Linux the boot and the process's start time); none when no process
    // runs as `pid`, or only one that has ended and waits to be collected.
    virtual std::optional<std::string> processStamp(std::int32_t pid) const = 0;
    // Ends a process, or every process of a group, at once (SIGKILL).
    virtual void endProcess(std::int32_t pid) = 0;
    virtual void endProcessGroup(std::int32_t group) = 0;
    // Removes a private session's folder with everything in it.
    virtual void removeFolder(const std::string& path) = 0;
};

}  // namespace zd
