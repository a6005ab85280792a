#pragma once
// Journal records in memory and a table of process stamps; ending a process takes its stamp
// away. Ends and removals are recorded in order in `calls`.

#include <map>
#include <string>
#include <vector>

#include "env/RunJournalBackend.h"

namespace zd::testing {

class FakeRunJournalBackend : public RunJournalBackend {
  public:
    std::vector<std::string> recordNames() const override {
        std::vector<std::string> names;
        for (const auto& record : records)
            names.push_back(record.first);
        return names;
    }
    std::optional<std::string> readRecord(const std::string& name) const override {
        return records.count(name) ? std::optional(records.at(name)) : std::nullopt;
    }
    bool writeRecord(const std::string& name, const std::string& text) override {
        return records[name] = text, true;
    }
    void removeRecord(const std::string& name) override { records.erase(name); }
    std::optional<std::string> processStamp(std::int32_t pid) const override {
        return stamps.count(pid) ? std::optional(stamps.at(pid)) : std::nullopt;
    }
    void endProcess(std::int32_t pid) override {
        stamps.erase(pid);
        calls.push_back("end " + std::to_string(pid));
    }
    void endProcessGroup(std::int32_t group) override {
        calls.push_back("end group " + std::to_string(group));
    }
    void removeFolder(const std::string& path) override { calls.push_back("remove " + path); }

    std::map<std::string, std::string> records;
    std::map<std::int32_t, std::string> stamps;
    std::vector<std::string> calls;
};

}  // namespace zd::testing
