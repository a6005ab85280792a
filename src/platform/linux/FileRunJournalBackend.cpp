#include "FileRunJournalBackend.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace zd::x11 {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view recordSuffix = ".journal";

std::optional<std::string> contentsOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return std::nullopt;
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

bool writeWhole(const fs::path& path, const std::string& text) {
    std::string temporary = path.string() + ".tmp-XXXXXX";
    const int fd = ::mkstemp(temporary.data());
    if (fd < 0)
        return false;
    std::size_t done = 0;
    while (done < text.size()) {
        const auto n = ::write(fd, text.data() + done, text.size() - done);
        if (n <= 0)
            break;
        done += static_cast<std::size_t>(n);
    }
    const bool written = done == text.size() && ::fsync(fd) == 0;
    ::close(fd);
    if (!written || ::rename(temporary.c_str(), path.c_str()) != 0) {
        ::unlink(temporary.c_str());
        return false;
    }
    return true;
}

}  // namespace

FileRunJournalBackend::FileRunJournalBackend(fs::path folder) : folder_(std::move(folder)) {}

std::optional<fs::path> FileRunJournalBackend::defaultFolder() {
    const char* state = std::getenv("XDG_STATE_HOME");
    if (state && state[0] == '/')
        return fs::path(state) / "zephyrdock" / "runs";
    const char* home = std::getenv("HOME");
    if (home && home[0] == '/')
        return fs::path(home) / ".local" / "state" / "zephyrdock" / "runs";
    return std::nullopt;
}

std::vector<std::string> FileRunJournalBackend::recordNames() const {
    std::vector<std::string> names;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(folder_, error)) {
        const std::string file = entry.path().filename().string();
        if (file.size() > recordSuffix.size() && file.ends_with(recordSuffix))
            names.push_back(file.substr(0, file.size() - recordSuffix.size()));
    }
    return names;
}

std::optional<std::string> FileRunJournalBackend::readRecord(const std::string& name) const {
    return contentsOf(folder_ / (name + std::string(recordSuffix)));
}

bool FileRunJournalBackend::writeRecord(const std::string& name, const std::string& text) {
    std::error_code error;
    fs::create_directories(folder_, error);
    return !error && writeWhole(folder_ / (name + std::string(recordSuffix)), text);
}

void FileRunJournalBackend::removeRecord(const std::string& name) {
    std::error_code ignored;
    fs::remove(folder_ / (name + std::string(recordSuffix)), ignored);
}

std::optional<std::string> FileRunJournalBackend::processStamp(std::int32_t pid) const {
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

void FileRunJournalBackend::endProcess(std::int32_t pid) {
    if (pid > 0)
        ::kill(pid, SIGKILL);
}

void FileRunJournalBackend::endProcessGroup(std::int32_t group) {
    if (group > 1)
        ::killpg(group, SIGKILL);
}

void FileRunJournalBackend::removeFolder(const std::string& path) {
    const fs::path folder(path);
    if (!folder.is_absolute() || !folder.filename().string().starts_with("zd-session."))
        return;
    std::error_code ignored;
    fs::remove_all(folder, ignored);
}

}  // namespace zd::x11
