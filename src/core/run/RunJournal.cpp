#include "run/RunJournal.h"

#include <algorithm>
#include <charconv>

#include "env/RunJournalBackend.h"

namespace zd {

namespace {

constexpr std::string_view header = "zephyrdock run journal 1";

// Line ends and backslashes escaped, so every value stays on its line.
std::string escaped(std::string_view text) {
    std::string result;
    for (char c : text) {
        if (c == '\\')
            result += "\\\\";
        else if (c == '\n')
            result += "\\n";
        else if (c == '\r')
            result += "\\r";
        else
            result += c;
    }
    return result;
}

std::optional<std::string> unescaped(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\') {
            result += text[i];
            continue;
        }
        if (++i == text.size())
            return std::nullopt;
        switch (text[i]) {
            case '\\':
                result += '\\';
                break;
            case 'n':
                result += '\n';
                break;
            case 'r':
                result += '\r';
                break;
            default:
                return std::nullopt;
        }
    }
    return result;
}

std::optional<std::int32_t> pidIn(std::string_view text) {
    std::int32_t pid = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), pid);
    if (error != std::errc() || end != text.data() + text.size() || pid <= 0)
        return std::nullopt;
    return pid;
}

// "<pid> <stamp>"
std::optional<RunJournal::Process> processIn(std::string_view text) {
    const auto blank = text.find(' ');
    if (blank == std::string_view::npos)
        return std::nullopt;
    auto pid = pidIn(text.substr(0, blank));
    auto stamp = unescaped(text.substr(blank + 1));
    if (!pid || !stamp)
        return std::nullopt;
    return RunJournal::Process{*pid, *stamp};
}

std::string processLine(std::string_view key, const RunJournal::Process& process) {
    return std::string(key) + " " + std::to_string(process.pid) + " " + escaped(process.stamp) +
           "\n";
}

}  // namespace

std::string RunJournal::format(const Record& record) {
    std::string text = std::string(header) + "\n" + processLine("owner", record.owner);
    if (!record.sessionFolder.empty())
        text += "session " + escaped(record.sessionFolder) + "\n";
    if (record.sessionGroup > 0)
        text += "group " + std::to_string(record.sessionGroup) + "\n";
    for (const auto& process : record.sessionProcesses)
        text += processLine("process", process);
    if (record.darkBefore)
        text += std::string("appearance ") + (*record.darkBefore ? "dark" : "light") + "\n";
    for (const auto& bundleID : record.languageOverrides)
        text += "language " + escaped(bundleID) + "\n";
    return text;
}

std::optional<RunJournal::Record> RunJournal::parse(std::string_view text) {
    Record record;
    bool first = true;
    bool owned = false;
    while (!text.empty()) {
        const auto end = text.find('\n');
        if (end == std::string_view::npos)
            return std::nullopt;  // every line ends: anything else was cut short
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(end + 1);
        if (first) {
            if (line != header)
                return std::nullopt;
            first = false;
            continue;
        }
        const auto blank = line.find(' ');
        const std::string_view key = line.substr(0, blank);
        const std::string_view value =
            blank == std::string_view::npos ? std::string_view() : line.substr(blank + 1);
        if (key == "owner" || key == "process") {
            auto process = processIn(value);
            if (!process)
                return std::nullopt;
            if (key == "owner") {
                record.owner = *process;
                owned = true;
            } else {
                record.sessionProcesses.push_back(*process);
            }
        } else if (key == "session") {
            auto folder = unescaped(value);
            if (!folder)
                return std::nullopt;
            record.sessionFolder = *folder;
        } else if (key == "group") {
            auto group = pidIn(value);
            if (!group)
                return std::nullopt;
            record.sessionGroup = *group;
        } else if (key == "appearance") {
            if (value != "dark" && value != "light")
                return std::nullopt;
            record.darkBefore = value == "dark";
        } else if (key == "language") {
            auto bundleID = unescaped(value);
            if (!bundleID || bundleID->empty())
                return std::nullopt;
            record.languageOverrides.push_back(*bundleID);
        } else {
            return std::nullopt;
        }
    }
    if (first || !owned)
        return std::nullopt;
    return record;
}

std::string RunJournal::recordName(const Process& owner) {
    std::string name = "run-" + std::to_string(owner.pid) + "-";
    for (char c : owner.stamp) {
        const bool plain =
            (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
        name += plain ? c : '_';
    }
    return name;
}

RunJournal::RunJournal(RunJournalBackend& backend, std::int32_t ownPid) : backend_(backend) {
    record_.owner = {ownPid, backend.processStamp(ownPid).value_or("")};
    name_ = recordName(record_.owner);
}

void RunJournal::noteSession(const std::string& folder, std::int32_t group,
                             const std::vector<std::int32_t>& pids) {
    std::lock_guard lock(mutex_);
    record_.sessionFolder = folder;
    record_.sessionGroup = group;
    record_.sessionProcesses.clear();
    for (std::int32_t pid : pids) {
        if (auto stamp = backend_.processStamp(pid))
            record_.sessionProcesses.push_back({pid, *stamp});
    }
    save();
}

void RunJournal::noteSessionProcess(std::int32_t pid) {
    std::lock_guard lock(mutex_);
    if (auto stamp = backend_.processStamp(pid)) {
        record_.sessionProcesses.push_back({pid, *stamp});
        save();
    }
}

void RunJournal::clearSession() {
    std::lock_guard lock(mutex_);
    record_.sessionFolder.clear();
    record_.sessionGroup = 0;
    record_.sessionProcesses.clear();
    save();
}

void RunJournal::noteAppearanceBefore(bool dark) {
    std::lock_guard lock(mutex_);
    if (record_.darkBefore)
        return;
    record_.darkBefore = dark;
    save();
}

void RunJournal::clearAppearance() {
    std::lock_guard lock(mutex_);
    if (!record_.darkBefore)
        return;
    record_.darkBefore.reset();
    save();
}

std::optional<bool> RunJournal::appearanceBefore() const {
    std::lock_guard lock(mutex_);
    return record_.darkBefore;
}

void RunJournal::noteLanguageOverride(const std::string& bundleID) {
    std::lock_guard lock(mutex_);
    auto& overrides = record_.languageOverrides;
    if (std::find(overrides.begin(), overrides.end(), bundleID) != overrides.end())
        return;
    overrides.push_back(bundleID);
    save();
}

void RunJournal::clearLanguageOverride(const std::string& bundleID) {
    std::lock_guard lock(mutex_);
    if (std::erase(record_.languageOverrides, bundleID) > 0)
        save();
}

RunJournal::Record RunJournal::record() const {
    std::lock_guard lock(mutex_);
    return record_;
}

void RunJournal::save() {
    if (record_.hasChanges())
        (void)backend_.writeRecord(name_, format(record_));
    else
        backend_.removeRecord(name_);
}

}  // namespace zd
