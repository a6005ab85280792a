#pragma once
// The scale of an X11 desktop: how many screen pixels the session's toolkits draw for one
// point. X has no such value of its own; a desktop tells its toolkits in one of these places,
// read in this order:
//   1. XSETTINGS Gdk/WindowScalingFactor (GNOME's settings daemon, our headless session),
//   2. GDK_SCALE in the environment,
//   3. Xft.dpi in the root window's RESOURCE_MANAGER, over 96 (what Qt and Xft follow),
//   4. XSETTINGS Xft/DPI (1024ths of a dpi), over 96.
// Nothing found, or nothing sensible, is scale 1.

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace zd::x11 {

struct DesktopScaleSources {
    std::map<std::string, std::int32_t> xsettingsIntegers;
    std::optional<std::string> gdkScale;
    std::optional<std::string> resourceManager;
};

double desktopScale(const DesktopScaleSources& sources);

// The integer settings of an _XSETTINGS_SETTINGS property value, by name; strings and colours
// are skipped, and a value cut short ends the reading.
std::map<std::string, std::int32_t> xsettingsIntegers(std::string_view data);

// The value of Xft.dpi in an X resource database's text.
std::optional<double> xftDpi(std::string_view resources);

}  // namespace zd::x11
