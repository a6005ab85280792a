#pragma once
// A settings store in one JSON file of typed values by key: the Linux edition's own, by
// default $XDG_CONFIG_HOME/zephyrdock/settings.json (~/.config when the variable is unset), and
// on either system the file a user names (--settings-file).
//
// Every write replaces the whole file atomically (temporary file in the same folder, flushed
// to disk, renamed over the old one), so a crash mid-write leaves the old file or the new one,
// never a torn one, and a process started later reads what the last one wrote. A file changed
// by another process is read again before the next read or write. A regular file that can't
// be read as a JSON object (torn by some other tool, or foreign) counts as empty, so every key
// falls back; it is left alone until the next write, which first moves it aside to
// "settings.json.corrupt" (or ".corrupt-2", ".corrupt-3" … when earlier ones are kept there), so
// nothing the user had is lost. Anything else at the path (a folder, a FIFO, a device) is never
// touched: reads fall back and writes are refused. A symbolic link is written through: the file
// it points at is replaced, the link stays. Writers hold "settings.json.lock", so two processes
// writing at once keep each other's keys.

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "env/SettingsStore.h"

namespace zd {

class FileSettingsStore : public SettingsStore {
  public:
    explicit FileSettingsStore(std::string path);

    // The settings file of this user, from the environment; nothing when neither
    // XDG_CONFIG_HOME nor HOME is set to an absolute folder.
    static std::optional<std::string> defaultPath();

    std::optional<Value> objectForKey(const std::string& key) const override;
    void setObject(const Value& value, const std::string& key) override;
    void removeObjectForKey(const std::string& key) override;
    std::vector<std::string> allKeys() const override;

    const std::string& path() const { return path_; }
    // Why the last write failed, or nothing when it succeeded. The system itself ignores a
    // failed write; the command line reports it.
    const std::optional<std::string>& lastWriteError() const { return lastWriteError_; }
    // The file on disk could not be read as settings at the last look.
    bool fileIsUnreadable() const;
    // Why the path can't hold settings at all ("is a folder", …), or nothing when it can.
    std::optional<std::string> unusablePath() const;
    // Where the last write moved an unreadable file aside, or nothing when it didn't.
    const std::optional<std::string>& setAside() const { return setAside_; }

  private:
    struct FileStamp {
        bool exists = false;
        std::uint64_t device = 0, inode = 0, size = 0;
        std::int64_t modifiedNanoseconds = 0;
        friend bool operator==(const FileStamp&, const FileStamp&) = default;
    };

    void refresh() const;
    // The file the settings live in: the path with its symbolic links followed.
    std::string targetPath() const;
    void makeFolder(const std::string& target);
    void write(std::map<std::string, Value> values);
    bool replaceFile(const std::string& target, const std::string& contents);
    bool moveAside(const std::string& target);

    std::string path_;
    mutable std::map<std::string, Value> values_;
    mutable std::optional<FileStamp> stamp_;  // of the file values_ came from
    mutable bool unreadable_ = false;
    mutable std::optional<std::string> unusable_;  // why the path holds no settings file
    std::optional<std::string> lastWriteError_;
    std::optional<std::string> setAside_;
};

}  // namespace zd
