#include "FileSettingsStore.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "JsonValueCodec.h"

namespace zd {

namespace {

namespace fs = std::filesystem;

// Far beyond any real settings file; a larger one is not read into memory.
constexpr std::uint64_t maxFileSize = 16u << 20;

std::string errorText(const std::string& what, int error) {
    return what + ": " + std::strerror(error);
}

bool writeAll(int fd, const std::string& contents) {
    std::size_t done = 0;
    while (done < contents.size()) {
        auto written = ::write(fd, contents.data() + done, contents.size() - done);
        if (written < 0) {
            if (errno == EINTR)
                continue;
            return false;
        }
        done += static_cast<std::size_t>(written);
    }
    return true;
}

// Makes a rename in the folder durable.
void syncFolder(const fs::path& folder) {
    int fd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return;
    ::fsync(fd);
    ::close(fd);
}

// Holds "<settings>.lock" exclusively, so that two processes writing at once don't lose each
// other's keys: each one's read-modify-write happens whole. Without the lock file (a read-only
// folder, say) the write goes ahead unguarded and fails on its own terms.
class WriteLock {
  public:
    explicit WriteLock(const std::string& settingsPath) {
        fd_ = ::open((settingsPath + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
        if (fd_ >= 0) {
            while (::flock(fd_, LOCK_EX) != 0 && errno == EINTR) {
            }
        }
    }
    ~WriteLock() {
        if (fd_ >= 0)
            ::close(fd_);  // closing releases the lock
    }
    WriteLock(const WriteLock&) = delete;
    WriteLock& operator=(const WriteLock&) = delete;

  private:
    int fd_ = -1;
};

}  // namespace

FileSettingsStore::FileSettingsStore(std::string path) : path_(std::move(path)) {}

std::optional<std::string> FileSettingsStore::defaultPath() {
    const char* config = std::getenv("XDG_CONFIG_HOME");
    fs::path base;
    // A relative XDG_CONFIG_HOME is invalid and to be ignored.
    if (config && config[0] == '/') {
        base = config;
    } else if (const char* home = std::getenv("HOME"); home && home[0] == '/') {
        base = fs::path(home) / ".config";
    } else {
        return std::nullopt;
    }
    return (base / "zephyrdock" / "settings.json").string();
}

void FileSettingsStore::refresh() const {
    struct stat info {};
    FileStamp stamp;
    if (::stat(path_.c_str(), &info) == 0) {
        stamp.exists = true;
        stamp.device = static_cast<std::uint64_t>(info.st_dev);
        stamp.inode = static_cast<std::uint64_t>(info.st_ino);
        stamp.size = static_cast<std::uint64_t>(info.st_size);
        stamp.modifiedNanoseconds =
            static_cast<std::int64_t>(info.st_mtim.tv_sec) * 1'000'000'000 + info.st_mtim.tv_nsec;
    }
    if (stamp_ && *stamp_ == stamp)
        return;
    stamp_ = stamp;
    values_.clear();
    unreadable_ = false;
    if (!stamp.exists)
        return;

    std::optional<Value> document;
    if (S_ISREG(info.st_mode) && stamp.size <= maxFileSize) {
        std::ifstream file(path_, std::ios::binary);
        std::ostringstream contents;
        contents << file.rdbuf();
        if (file)
            document = JsonValueCodec::decode(contents.str());
    }
    const auto* members = document ? document->asDictionary() : nullptr;
    if (!members) {
        unreadable_ = true;
        return;
    }
    for (const auto& [key, value] : *members) {
        if (!value.isNull())
            values_.emplace(key, value);
    }
}

std::optional<Value> FileSettingsStore::objectForKey(const std::string& key) const {
    refresh();
    auto it = values_.find(key);
    if (it == values_.end())
        return std::nullopt;
    return it->second;
}

std::vector<std::string> FileSettingsStore::allKeys() const {
    refresh();
    std::vector<std::string> keys;
    for (const auto& [key, value] : values_)
        keys.push_back(key);
    return keys;
}

bool FileSettingsStore::fileIsUnreadable() const {
    refresh();
    return unreadable_;
}

void FileSettingsStore::setObject(const Value& value, const std::string& key) {
    if (value.isNull()) {
        removeObjectForKey(key);
        return;
    }
    makeFolder();
    WriteLock lock(path_);
    refresh();
    auto values = values_;
    values[key] = value;
    write(std::move(values));
}

void FileSettingsStore::removeObjectForKey(const std::string& key) {
    makeFolder();
    WriteLock lock(path_);
    refresh();
    auto values = values_;
    values.erase(key);
    write(std::move(values));
}

void FileSettingsStore::makeFolder() {
    lastWriteError_.reset();
    fs::path folder = fs::path(path_).parent_path();
    std::error_code error;
    fs::create_directories(folder, error);
    if (error)
        lastWriteError_ = "cannot create " + folder.string() + ": " + error.message();
}

void FileSettingsStore::write(std::map<std::string, Value> values) {
    if (lastWriteError_)
        return;
    if (unreadable_) {
        // Keep what the user had, however unreadable, before it is replaced.
        std::string aside = path_ + ".corrupt";
        if (::rename(path_.c_str(), aside.c_str()) != 0 && errno != ENOENT) {
            lastWriteError_ = errorText("cannot move the unreadable " + path_ + " aside", errno);
            return;
        }
    }
    ValueDictionary document(values.begin(), values.end());
    if (!replaceFile(JsonValueCodec::encode(Value(std::move(document)))))
        return;
    values_ = std::move(values);
    unreadable_ = false;
    stamp_.reset();  // the next look takes the new file's stamp
    refresh();
}

bool FileSettingsStore::replaceFile(const std::string& contents) {
    std::string temporary = path_ + ".tmp-XXXXXX";
    int fd = ::mkstemp(temporary.data());
    if (fd < 0) {
        lastWriteError_ = errorText("cannot create a file beside " + path_, errno);
        return false;
    }
    bool written = writeAll(fd, contents) && ::fsync(fd) == 0;
    int writeError = errno;
    if (::close(fd) != 0 && written) {
        written = false;
        writeError = errno;
    }
    if (!written) {
        lastWriteError_ = errorText("cannot write " + temporary, writeError);
        ::unlink(temporary.c_str());
        return false;
    }
    if (::rename(temporary.c_str(), path_.c_str()) != 0) {
        lastWriteError_ = errorText("cannot replace " + path_, errno);
        ::unlink(temporary.c_str());
        return false;
    }
    syncFolder(fs::path(path_).parent_path());
    return true;
}

}  // namespace zd
