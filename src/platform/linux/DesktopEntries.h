#pragma once
// The installed applications' desktop files (XDG_DATA_HOME and XDG_DATA_DIRS, folder
// "applications"): an application's identity on Linux is its desktop-file id, and the file
// tells its name, its command and its icon. Read once, on first use.

#include <filesystem>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace zd::x11 {

struct DesktopEntry {
    std::string id;                 // "org.gnome.gedit" for org.gnome.gedit.desktop
    std::string name;               // Name, in the user's language where the file has it
    std::vector<std::string> exec;  // Exec, split, field codes (%f, %U …) removed
    std::string icon;               // Icon: a theme name or an absolute path
    std::string startupWMClass;
    bool noDisplay = false;
};

class DesktopEntries {
  public:
    // Folders holding "applications/"; by default XDG_DATA_HOME then XDG_DATA_DIRS.
    explicit DesktopEntries(std::vector<std::filesystem::path> dataDirs = defaultDataDirs());

    static std::vector<std::filesystem::path> defaultDataDirs();

    std::optional<DesktopEntry> byId(const std::string& id) const;
    // The entry whose command starts the program `executable` (a path or a bare name), matched
    // by the program's file name; for interpreters (python3 script.py) `script` is the name of
    // the script they run. The first entry by id wins.
    std::optional<DesktopEntry> forProgram(const std::string& executable,
                                           const std::string& script = {}) const;
    // The entry that names `wmClass` as its StartupWMClass, or whose id ends in it.
    std::optional<DesktopEntry> forWindowClass(const std::string& wmClass) const;

    // Splits an Exec value by the desktop-file quoting rules and drops field codes.
    static std::vector<std::string> splitExec(const std::string& exec);
    // Reads one desktop file; none for hidden entries and for what isn't an application.
    static std::optional<DesktopEntry> read(const std::filesystem::path& file, std::string id);

  private:
    void load() const;
    void loadOnce() const;
    std::vector<std::filesystem::path> dirs_;
    mutable std::once_flag loaded_;  // lookups may come from several threads
    mutable std::vector<DesktopEntry> entries_;
};

}  // namespace zd::x11
