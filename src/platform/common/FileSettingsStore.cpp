#include "FileSettingsStore.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
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

// The file's modification time: POSIX names it st_mtim, Darwin st_mtimespec.
template <typename Stat>
std::int64_t modifiedNanoseconds(const Stat& info) {
    const auto& time = [&]() -> const auto& {
        if constexpr (requires { info.st_mtim; })
            return info.st_mtim;
        else
            return info.st_mtimespec;
    }
    ();
    return static_cast<std::int64_t>(time.tv_sec) * 1'000'000'000 + time.tv_nsec;
}

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

// What stands at a path that isn't a regular file, in words for a message.
std::string kindOf(mode_t mode) {
    if (S_ISDIR(mode))
        return "is a folder";
    if (S_ISFIFO(mode))
        return "is a FIFO";
    if (S_ISSOCK(mode))
        return "is a socket";
    if (S_ISCHR(mode) || S_ISBLK(mode))
        return "is a device";
    return "is not a regular file";
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
    const bool found = ::stat(path_.c_str(), &info) == 0;
    const int statError = errno;
    if (found) {
        stamp.exists = true;
        stamp.device = static_cast<std::uint64_t>(info.st_dev);
        stamp.inode = static_cast<std::uint64_t>(info.st_ino);
        stamp.size = static_cast<std::uint64_t>(info.st_size);
        stamp.modifiedNanoseconds = modifiedNanoseconds(info);
    }
    if (stamp_ && *stamp_ == stamp)
        return;
    stamp_ = stamp;
    values_.clear();
    unreadable_ = false;
    unusable_.reset();
    if (!found && statError != ENOENT) {
        // A path through a file, a loop of links, no permission: nothing can be kept there.
        unusable_ = std::string("can't be reached: ") + std::strerror(statError);
        return;
    }
    if (!stamp.exists)
        return;
    if (!S_ISREG(info.st_mode)) {
        unusable_ = kindOf(info.st_mode);
        return;
    }

    std::optional<Value> document;
    if (stamp.size <= maxFileSize) {
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

std::optional<std::string> FileSettingsStore::unusablePath() const {
    refresh();
    return unusable_;
}

void FileSettingsStore::setObject(const Value& value, const std::string& key) {
    if (value.isNull()) {
        removeObjectForKey(key);
        return;
    }
    makeFolder(targetPath());
    WriteLock lock(path_);
    refresh();
    auto values = values_;
    values[key] = value;
    write(std::move(values));
}

void FileSettingsStore::removeObjectForKey(const std::string& key) {
    makeFolder(targetPath());
    WriteLock lock(path_);
    refresh();
    auto values = values_;
    values.erase(key);
    write(std::move(values));
}

std::string FileSettingsStore::targetPath() const {
    fs::path current = path_;
    for (int hops = 0; hops < 40; ++hops) {  // the system's own limit on a chain of links
        struct stat info {};
        if (::lstat(current.c_str(), &info) != 0 || !S_ISLNK(info.st_mode))
            break;
        std::error_code error;
        const fs::path link = fs::read_symlink(current, error);
        if (error)
            break;
        current = link.is_absolute() ? link : current.parent_path() / link;
    }
    return current.string();
}

void FileSettingsStore::makeFolder(const std::string& target) {
    lastWriteError_.reset();
    setAside_.reset();
    fs::path folder = fs::path(target).parent_path();
    std::error_code error;
    fs::create_directories(folder, error);
    if (error)
        lastWriteError_ = "cannot create " + folder.string() + ": " + error.message();
}

void FileSettingsStore::write(std::map<std::string, Value> values) {
    if (lastWriteError_)
        return;
    if (unusable_) {
        lastWriteError_ = path_ + " " + *unusable_ + ", not a settings file; nothing was written";
        return;
    }
    const std::string target = targetPath();
    // Keep what the user had, however unreadable, before it is replaced.
    if (unreadable_ && !moveAside(target))
        return;
    ValueDictionary document(values.begin(), values.end());
    if (!replaceFile(target, JsonValueCodec::encode(Value(std::move(document)))))
        return;
    values_ = std::move(values);
    unreadable_ = false;
    stamp_.reset();  // the next look takes the new file's stamp
    refresh();
}

bool FileSettingsStore::moveAside(const std::string& target) {
    // Never over an earlier copy: each unreadable file the user had is kept.
    for (int n = 1; n < 10000; ++n) {
        const std::string aside = target + ".corrupt" + (n == 1 ? "" : "-" + std::to_string(n));
        if (::renameat2(AT_FDCWD, target.c_str(), AT_FDCWD, aside.c_str(), RENAME_NOREPLACE) == 0) {
            setAside_ = aside;
            return true;
        }
        if (errno == EEXIST)
            continue;
        if (errno == ENOENT)
            return true;  // gone meanwhile: nothing left to keep
        if (errno == EINVAL && ::link(target.c_str(), aside.c_str()) == 0) {
            // A file system without a non-replacing rename: a second name, then drop the first.
            ::unlink(target.c_str());
            setAside_ = aside;
            return true;
        }
        if (errno == EEXIST)
            continue;
        break;
    }
    lastWriteError_ = errorText("cannot move the unreadable " + target + " aside", errno);
    return false;
}

bool FileSettingsStore::replaceFile(const std::string& target, const std::string& contents) {
    std::string temporary = target + ".tmp-XXXXXX";
    int fd = ::mkstemp(temporary.data());
    if (fd < 0) {
        lastWriteError_ = errorText("cannot create a file beside " + target, errno);
        return false;
    }
    // A file written through a link keeps the permissions it had.
    if (struct stat old{}; ::stat(target.c_str(), &old) == 0)
        ::fchmod(fd, old.st_mode & 07777);
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
    if (::rename(temporary.c_str(), target.c_str()) != 0) {
        lastWriteError_ = errorText("cannot replace " + target, errno);
        ::unlink(temporary.c_str());
        return false;
    }
    syncFolder(fs::path(target).parent_path());
    return true;
}

}  // namespace zd
