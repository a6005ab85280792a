#include "GnomeAppearanceBackend.h"

#include <dirent.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <thread>

#include "ToolRunner.h"

namespace zd::x11 {

namespace {

constexpr const char* schema = "org.gnome.desktop.interface";
constexpr const char* dconfFolder = "/org/gnome/desktop/interface/";

std::vector<std::string> numberedEntries(const char* folder) {
    std::vector<std::string> names;
    if (DIR* dir = opendir(folder)) {
        while (dirent* entry = readdir(dir)) {
            const std::string name = entry->d_name;
            if (!name.empty() && std::all_of(name.begin(), name.end(),
                                             [](unsigned char c) { return std::isdigit(c); })) {
                names.push_back(name);
            }
        }
        closedir(dir);
    }
    return names;
}

GnomeAppearanceBackend::Options optionsFromEnvironment() {
    GnomeAppearanceBackend::Options options;
    if (const char* config = std::getenv("ZD_XSETTINGSD_CONFIG"); config && *config) {
        options.settingsConfig = config;
    }
    if (const char* pid = std::getenv("ZD_XSETTINGSD_PID"); pid && *pid) {
        options.settingsDaemonPid = static_cast<pid_t>(std::atol(pid));
    }
    // A desktop whose XSETTINGS come from the user's own xsettingsd (window-manager sessions
    // without GNOME's settings daemon): its config is rewritten the same way.
    if (options.settingsConfig.empty()) {
        if (auto daemon = GnomeAppearanceBackend::runningSettingsDaemon()) {
            options.settingsConfig = daemon->first;
            options.settingsDaemonPid = daemon->second;
        }
    }
    std::filesystem::path configHome;
    if (const char* xdg = std::getenv("XDG_CONFIG_HOME"); xdg && *xdg) {
        configHome = xdg;
    } else if (const char* home = std::getenv("HOME"); home && *home) {
        configHome = std::filesystem::path(home) / ".config";
    }
    if (!configHome.empty())
        options.qtConfig = configHome / "qt6ct" / "qt6ct.conf";
    return options;
}

std::string trimmed(std::string text) {
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.back())))
        text.pop_back();
    return text;
}

std::string unquoted(std::string text) {
    if (text.size() >= 2 && text.front() == '\'' && text.back() == '\'')
        return text.substr(1, text.size() - 2);
    return text;
}

std::optional<std::string> readFile(const std::filesystem::path& path) {
    if (path.empty())
        return std::nullopt;
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return std::nullopt;
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

std::vector<std::string> nulSeparated(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::vector<std::string> parts;
    for (std::string part; std::getline(in, part, '\0');)
        parts.push_back(part);
    return parts;
}

// Whether another running process has this shared library mapped.
bool anotherProcessLoaded(const std::string& library) {
    const std::string self = std::to_string(getpid());
    for (const auto& pid : numberedEntries("/proc")) {
        if (pid == self)
            continue;
        std::ifstream maps("/proc/" + pid + "/maps");
        for (std::string line; std::getline(maps, line);) {
            if (line.find(library) != std::string::npos)
                return true;
        }
    }
    return false;
}

}  // namespace

GnomeAppearanceBackend::GnomeAppearanceBackend()
    : GnomeAppearanceBackend(optionsFromEnvironment()) {}

GnomeAppearanceBackend::GnomeAppearanceBackend(Options options) : options_(std::move(options)) {}

std::optional<ToolResult> GnomeAppearanceBackend::readDarkMode() {
    return runTool({options_.gsettings, "get", schema, "color-scheme"});
}

std::optional<ToolResult> GnomeAppearanceBackend::writeDarkMode(bool dark) {
    if (!found_) {
        found_ = find();
        if (!found_->colorScheme) {
            found_.reset();
            return std::nullopt;  // gsettings can't be run
        }
    }
    const bool back = dark == found_->dark;
    const bool written = back ? putBack(*found_) : switchTo(*found_, dark);
    if (back)
        found_.reset();  // the next switch starts from what the desktop has then
    return ToolResult{written ? 0 : 1, {}};
}

std::optional<GnomeAppearanceBackend::Key> GnomeAppearanceBackend::readKey(
    const std::string& key) const {
    const auto value = runTool({options_.gsettings, "get", schema, key});
    if (!value || value->exitStatus != 0)
        return std::nullopt;
    Key found{trimmed(value->standardOutput), true};
    // dconf prints nothing for a key the user never set; gsettings shows its default.
    const auto own = runTool({options_.dconf, "read", std::string(dconfFolder) + key});
    if (own && own->exitStatus == 0 && trimmed(own->standardOutput).empty())
        found.userSet = false;
    return found;
}

bool GnomeAppearanceBackend::writeKey(const std::string& key, const std::optional<Key>& original,
                                      const std::string& value) const {
    const bool reset = original && !original->userSet && value == original->value;
    const auto result = reset ? runTool({options_.gsettings, "reset", schema, key})
                              : runTool({options_.gsettings, "set", schema, key, value});
    return result && result->exitStatus == 0;
}

bool GnomeAppearanceBackend::writeFile(const std::filesystem::path& path,
                                       const std::string& text) const {
    const std::filesystem::path temporary = path.string() + ".new";
    {
        std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
        out << text;
        if (!out.flush())
            return false;
    }
    std::error_code ec;
    std::filesystem::rename(temporary, path, ec);
    return !ec;
}

GnomeAppearanceBackend::Found GnomeAppearanceBackend::find() const {
    Found found;
    found.colorScheme = readKey("color-scheme");
    found.dark =
        found.colorScheme && found.colorScheme->value.find("prefer-dark") != std::string::npos;
    found.gtkTheme = readKey("gtk-theme");
    found.settingsConfig = readFile(options_.settingsConfig);
    found.qtConfig = readFile(options_.qtConfig);
    return found;
}

bool GnomeAppearanceBackend::putBack(const Found& found) {
    bool ok = writeKey("color-scheme", found.colorScheme, found.colorScheme->value);
    if (found.gtkTheme)
        ok = writeKey("gtk-theme", found.gtkTheme, found.gtkTheme->value) && ok;
    bool qtChanged = false;
    if (found.settingsConfig && readFile(options_.settingsConfig) != found.settingsConfig) {
        ok = writeFile(options_.settingsConfig, *found.settingsConfig) && ok;
    }
    if (found.qtConfig && readFile(options_.qtConfig) != found.qtConfig) {
        ok = writeFile(options_.qtConfig, *found.qtConfig) && ok;
        qtChanged = true;
    }
    // xsettingsd reads its file again on SIGHUP and tells every client.
    if (found.settingsConfig && options_.settingsDaemonPid > 0)
        ok = ::kill(options_.settingsDaemonPid, SIGHUP) == 0 && ok;
    if (qtChanged && anotherProcessLoaded("libqt6ct.so"))
        std::this_thread::sleep_for(options_.qtFollowDelay);
    return ok;
}

bool GnomeAppearanceBackend::switchTo(const Found& found, bool dark) {
    bool ok = writeKey("color-scheme", found.colorScheme, dark ? "prefer-dark" : "default");
    const std::string theme =
        gtkThemeFor(found.gtkTheme ? unquoted(found.gtkTheme->value) : "Adwaita", dark);
    if (found.gtkTheme)
        ok = writeKey("gtk-theme", found.gtkTheme, theme) && ok;
    if (found.settingsConfig) {
        ok = writeFile(options_.settingsConfig, withThemeName(*found.settingsConfig, theme)) && ok;
        if (options_.settingsDaemonPid > 0)
            ok = ::kill(options_.settingsDaemonPid, SIGHUP) == 0 && ok;
    }
    if (found.qtConfig) {
        const std::string text = withQtPalette(*found.qtConfig, dark, options_.qtDarkColors);
        if (readFile(options_.qtConfig) != text) {
            ok = writeFile(options_.qtConfig, text) && ok;
            if (anotherProcessLoaded("libqt6ct.so"))
                std::this_thread::sleep_for(options_.qtFollowDelay);
        }
    }
    return ok;
}

std::string GnomeAppearanceBackend::withThemeName(const std::string& config,
                                                  const std::string& theme) {
    std::istringstream in(config);
    std::string out;
    bool written = false;
    for (std::string line; std::getline(in, line);) {
        std::istringstream words(line);
        std::string name;
        words >> name;
        if (name == "Net/ThemeName") {
            if (written)
                continue;
            line = "Net/ThemeName \"" + theme + "\"";
            written = true;
        }
        out += line + "\n";
    }
    if (!written)
        out += "Net/ThemeName \"" + theme + "\"\n";
    return out;
}

std::string GnomeAppearanceBackend::withQtPalette(const std::string& config, bool dark,
                                                  const std::string& darkColors) {
    std::vector<std::string> wanted = {std::string("custom_palette=") + (dark ? "true" : "false")};
    if (dark)
        wanted.push_back("color_scheme_path=" + darkColors);
    auto keyOf = [](const std::string& line) { return line.substr(0, line.find('=') + 1); };

    std::istringstream in(config);
    std::string out;
    bool inAppearance = false;
    bool sawAppearance = false;
    auto addMissing = [&] {
        for (const auto& line : wanted)
            out += line + "\n";
        wanted.clear();
    };
    for (std::string line; std::getline(in, line);) {
        if (!line.empty() && line.front() == '[') {
            if (inAppearance)
                addMissing();
            inAppearance = line == "[Appearance]";
            sawAppearance = sawAppearance || inAppearance;
        } else if (inAppearance) {
            const auto match = std::find_if(wanted.begin(), wanted.end(),
                                            [&](const auto& w) { return keyOf(w) == keyOf(line); });
            if (match != wanted.end()) {
                line = *match;
                wanted.erase(match);
            }
        }
        out += line + "\n";
    }
    if (!sawAppearance)
        out += "[Appearance]\n";
    addMissing();
    return out;
}

std::optional<std::pair<std::filesystem::path, pid_t>>
GnomeAppearanceBackend::runningSettingsDaemon() {
    const uid_t uid = getuid();
    const char* ourDisplay = std::getenv("DISPLAY");
    if (!ourDisplay || !*ourDisplay)
        return std::nullopt;
    const std::string display = ourDisplay;
    for (const auto& pid : numberedEntries("/proc")) {
        const std::filesystem::path dir = "/proc/" + pid;
        std::ifstream comm(dir / "comm");
        std::string name;
        std::getline(comm, name);
        if (name != "xsettingsd")
            continue;
        if (struct stat info{}; ::stat(dir.c_str(), &info) != 0 || info.st_uid != uid)
            continue;
        // Only the daemon of this display serves this desktop's applications.
        const auto environment = nulSeparated(dir / "environ");
        if (std::find(environment.begin(), environment.end(), "DISPLAY=" + display) ==
            environment.end()) {
            continue;
        }
        const auto args = nulSeparated(dir / "cmdline");
        // xsettingsd -c FILE / --config=FILE; by default ~/.xsettingsd.
        std::filesystem::path config;
        for (std::size_t i = 1; i < args.size(); ++i) {
            if ((args[i] == "-c" || args[i] == "--config") && i + 1 < args.size())
                config = args[i + 1];
            else if (args[i].starts_with("--config="))
                config = args[i].substr(9);
        }
        if (config.empty()) {
            const char* home = std::getenv("HOME");
            if (!home)
                continue;
            config = std::filesystem::path(home) / ".xsettingsd";
        }
        return std::make_pair(config, static_cast<pid_t>(std::stol(pid)));
    }
    return std::nullopt;
}

std::string GnomeAppearanceBackend::gtkThemeFor(const std::string& theme, bool dark) {
    std::string lower = theme;
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    const bool isDark = lower.ends_with("-dark") || lower.ends_with(":dark");
    if (dark)
        return isDark ? theme : "Adwaita-dark";
    return isDark ? theme.substr(0, theme.size() - 5) : theme;
}

}  // namespace zd::x11
