#pragma once
// The system's dark mode on a Linux desktop, switched for every toolkit that draws the target:
// the GNOME colour scheme in gsettings (libadwaita follows it live), the GTK theme, which GTK 3
// follows live through XSETTINGS (gsettings' gtk-theme on a GNOME desktop, whose settings
// daemon serves it; the xsettingsd config of the private session), and qt6ct's palette, which
// Qt 6 applications started with QT_QPA_PLATFORMTHEME=qt6ct follow a few seconds later (Qt
// 6.4's own GTK theme reads the GTK theme only at start). The colour scheme is what is read.
//
// What the first switch finds is kept: switching back to that mode puts every value back as it
// was, byte for byte, rather than writing a light theme of our choosing.

#include <sys/types.h>

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>

#include "env/AppearanceBackend.h"

namespace zd::x11 {

class GnomeAppearanceBackend : public AppearanceBackend {
  public:
    struct Options {
        // xsettingsd's config file and pid; by default from ZD_XSETTINGSD_CONFIG and
        // ZD_XSETTINGSD_PID (set by the headless session), else a running xsettingsd's.
        std::filesystem::path settingsConfig;
        pid_t settingsDaemonPid = 0;
        // qt6ct's config; by default $XDG_CONFIG_HOME/qt6ct/qt6ct.conf. Left alone when absent.
        std::filesystem::path qtConfig;
        std::string qtDarkColors = "/usr/share/qt6ct/colors/darker.conf";
        // qt6ct reads its changed config after a 3 s delay; a switch that changed it waits this
        // long when a running process has qt6ct loaded, so the capture after it sees the change.
        std::chrono::milliseconds qtFollowDelay{3800};
        std::string gsettings = "gsettings";
        std::string dconf = "dconf";
    };

    GnomeAppearanceBackend();
    explicit GnomeAppearanceBackend(Options options);

    std::optional<ToolResult> readDarkMode() override;
    std::optional<ToolResult> writeDarkMode(bool dark) override;

    // The config text with Net/ThemeName set, other lines kept.
    static std::string withThemeName(const std::string& config, const std::string& theme);
    // qt6ct's config with the dark colour scheme in use, or with no custom palette; other
    // lines and groups kept.
    static std::string withQtPalette(const std::string& config, bool dark,
                                     const std::string& darkColors);
    // The GTK theme of the other mode: "Adwaita-dark" for a light theme, a dark theme's light
    // sibling ("Foo-dark" → "Foo").
    static std::string gtkThemeFor(const std::string& theme, bool dark);
    // The config file and pid of this user's xsettingsd on this DISPLAY, if one runs.
    static std::optional<std::pair<std::filesystem::path, pid_t>> runningSettingsDaemon();

  private:
    // One gsettings key as found: its printed value, and whether the user had set it at all.
    struct Key {
        std::string value;
        bool userSet = true;
    };
    struct Found {
        bool dark = false;
        std::optional<Key> colorScheme;
        std::optional<Key> gtkTheme;
        std::optional<std::string> settingsConfig;
        std::optional<std::string> qtConfig;
    };

    std::optional<Key> readKey(const std::string& key) const;
    bool writeKey(const std::string& key, const std::optional<Key>& original,
                  const std::string& value) const;
    bool writeFile(const std::filesystem::path& path, const std::string& text) const;
    Found find() const;
    bool putBack(const Found& found);
    bool switchTo(const Found& found, bool dark);

    Options options_;
    std::optional<Found> found_;  // from the first switch until the switch back
};

}  // namespace zd::x11
