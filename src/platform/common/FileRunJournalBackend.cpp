#include "FileRunJournalBackend.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <fstream>
#include <sstream>

#include "ProcessStamp.h"

namespace zd {

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
    return zd::processStamp(pid);
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

}  // namespace zd
