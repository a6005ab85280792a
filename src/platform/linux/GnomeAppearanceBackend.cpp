#include "GnomeAppearanceBackend.h"

#include <signal.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

#include "ToolRunner.h"

namespace zd::x11 {

namespace {

constexpr const char* schema = "org.gnome.desktop.interface";
constexpr const char* key = "color-scheme";

GnomeAppearanceBackend::Options optionsFromEnvironment() {
    GnomeAppearanceBackend::Options options;
    if (const char* config = std::getenv("ZD_XSETTINGSD_CONFIG"); config && *config) {
        options.settingsConfig = config;
    }
    if (const char* pid = std::getenv("ZD_XSETTINGSD_PID"); pid && *pid) {
        options.settingsDaemonPid = static_cast<pid_t>(std::atol(pid));
    }
    return options;
}

}  // namespace

GnomeAppearanceBackend::GnomeAppearanceBackend()
    : GnomeAppearanceBackend(optionsFromEnvironment()) {}

GnomeAppearanceBackend::GnomeAppearanceBackend(Options options) : options_(std::move(options)) {}

std::optional<ToolResult> GnomeAppearanceBackend::readDarkMode() {
    return runTool({options_.gsettings, "get", schema, key});
}

std::optional<ToolResult> GnomeAppearanceBackend::writeDarkMode(bool dark) {
    auto result =
        runTool({options_.gsettings, "set", schema, key, dark ? "prefer-dark" : "default"});
    if (!result || result->exitStatus != 0)
        return result;
    if (!writeThemeName(dark))
        return ToolResult{1, {}};
    return result;
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

bool GnomeAppearanceBackend::writeThemeName(bool dark) const {
    if (options_.settingsConfig.empty())
        return true;
    std::string config;
    {
        std::ifstream in(options_.settingsConfig);
        std::ostringstream text;
        text << in.rdbuf();
        config = text.str();
    }
    const std::filesystem::path temporary = options_.settingsConfig.string() + ".new";
    {
        std::ofstream out(temporary, std::ios::trunc);
        out << withThemeName(config, dark ? "Adwaita-dark" : "Adwaita");
        if (!out.flush())
            return false;
    }
    std::error_code ec;
    std::filesystem::rename(temporary, options_.settingsConfig, ec);
    if (ec)
        return false;
    // xsettingsd reads its file again on SIGHUP and tells every client.
    return options_.settingsDaemonPid <= 0 || ::kill(options_.settingsDaemonPid, SIGHUP) == 0;
}

}  // namespace zd::x11
