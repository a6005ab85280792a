#pragma once
// The system's dark mode on a Linux desktop: the GNOME colour scheme in gsettings, which
// libadwaita applications follow live, and the XSETTINGS theme name served by xsettingsd
// (Adwaita or Adwaita-dark), which GTK 3 applications follow live. The colour scheme is what
// is read; both are written.

#include <sys/types.h>

#include <filesystem>
#include <string>

#include "env/AppearanceBackend.h"

namespace zd::x11 {

class GnomeAppearanceBackend : public AppearanceBackend {
  public:
    struct Options {
        // xsettingsd's config file and pid; by default from ZD_XSETTINGSD_CONFIG and
        // ZD_XSETTINGSD_PID (set by the headless session). Without them only gsettings is
        // written.
        std::filesystem::path settingsConfig;
        pid_t settingsDaemonPid = 0;
        std::string gsettings = "gsettings";
    };

    GnomeAppearanceBackend();
    explicit GnomeAppearanceBackend(Options options);

    std::optional<ToolResult> readDarkMode() override;
    std::optional<ToolResult> writeDarkMode(bool dark) override;

    // The config text with Net/ThemeName set, other lines kept.
    static std::string withThemeName(const std::string& config, const std::string& theme);

  private:
    bool writeThemeName(bool dark) const;
    Options options_;
};

}  // namespace zd::x11
