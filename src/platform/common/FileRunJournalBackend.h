#pragma once
// The run journal in plain files: one small file per process in a folder the platform
// chooses (on Linux $XDG_STATE_HOME/zephyrdock/runs, on macOS the application's folder in
// Application Support), replaced whole on each write; a process's stamp is the platform's
// (ProcessStamp.h); ends are SIGKILL.

#include <filesystem>
#include <optional>
#include <string>

#include "env/RunJournalBackend.h"

namespace zd {

class FileRunJournalBackend : public RunJournalBackend {
  public:
    explicit FileRunJournalBackend(std::filesystem::path folder);

    std::vector<std::string> recordNames() const override;
    std::optional<std::string> readRecord(const std::string& name) const override;
    bool writeRecord(const std::string& name, const std::string& text) override;
    void removeRecord(const std::string& name) override;
    std::optional<std::string> processStamp(std::int32_t pid) const override;
    void endProcess(std::int32_t pid) override;
    void endProcessGroup(std::int32_t group) override;
    // Only a private session's own folder ("zd-session.*"): a damaged record can't point it
    // at anything else.
    void removeFolder(const std::string& path) override;

    const std::filesystem::path& folder() const { return folder_; }

  private:
    std::filesystem::path folder_;
};

}  // namespace zd
