#pragma once
// The settings of the synthetic menu bar.

#include <string>
#include <vector>

namespace zd {

struct MenuBarConfig {
    bool visible = true;
    bool hasBackground = true;
    std::string clockText = "9:41 AM";
    int batteryPercent = 100;
    bool showBattery = true;
    bool showWiFi = true;
    bool showSpotlight = true;
    bool showControlCenter = true;
    std::vector<std::string> customAccessories;
    std::string appName;
    std::vector<std::string> menuTitles;
    // true: the right side of the bar is replaced by the drawn clock and icons ("Clean
    // accessories"); false: the live menu bar stays as captured ("Real accessories").
    bool replaceAccessories = true;

    friend bool operator==(const MenuBarConfig&, const MenuBarConfig&) = default;
};

}  // namespace zd
