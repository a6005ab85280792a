#pragma once
// The journal of what a run has changed on the machine, so that a start after a crash (kill -9,
// a power loss) can put it back: the system's appearance as it was before the first switch,
// the applications whose language override stands, and the processes and folder of a private
// headless session. Each entry is written before its change and dropped once the change is
// undone; a process that ends with nothing outstanding leaves no record. One record per
// process, named after it, so runs of several processes at once keep apart.

#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zd {

class RunJournalBackend;

class RunJournal {
  public:
    struct Process {
        std::int32_t pid = 0;
        std::string stamp;  // RunJournalBackend::processStamp when it was noted
        friend bool operator==(const Process&, const Process&) = default;
    };
    struct Record {
        Process owner;
        // A private session: what its run changed lived inside it, so only its processes and
        // folder are left to clean.
        std::string sessionFolder;
        std::int32_t sessionGroup = 0;
        std::vector<Process> sessionProcesses;
        std::optional<bool> darkBefore;              // the appearance before the run switched it
        std::vector<std::string> languageOverrides;  // applications whose override stands

        bool hasChanges() const {
            return !sessionFolder.empty() || !sessionProcesses.empty() || darkBefore ||
                   !languageOverrides.empty();
        }
        friend bool operator==(const Record&, const Record&) = default;
    };

    // The record as text: one entry a line, values escaped so any path or identity survives.
    static std::string format(const Record& record);
    // None for a text that isn't a record.
    static std::optional<Record> parse(std::string_view text);
    // The record's name for the process that owns it.
    static std::string recordName(const Process& owner);

    RunJournal(RunJournalBackend& backend, std::int32_t ownPid);
    RunJournal(const RunJournal&) = delete;
    RunJournal& operator=(const RunJournal&) = delete;

    // Entries may be noted from any thread.
    void noteSession(const std::string& folder, std::int32_t group,
                     const std::vector<std::int32_t>& pids);
    // A process started on the private session for the run (a --launch'ed program).
    void noteSessionProcess(std::int32_t pid);
    void clearSession();
    // Before a switch of the appearance; the first mode noted is kept until it is cleared.
    void noteAppearanceBefore(bool dark);
    void clearAppearance();
    std::optional<bool> appearanceBefore() const;
    void noteLanguageOverride(const std::string& bundleID);
    void clearLanguageOverride(const std::string& bundleID);

    Record record() const;

  private:
    void save();  // with mutex_ held

    RunJournalBackend& backend_;
    mutable std::mutex mutex_;
    Record record_;
    std::string name_;
};

}  // namespace zd
