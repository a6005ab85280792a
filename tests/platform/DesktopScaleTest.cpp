// The desktop's scale, from the places a session tells its toolkits.
#include "linux/DesktopScale.h"

#include <gtest/gtest.h>

namespace zd::x11 {
namespace {

// An _XSETTINGS_SETTINGS value, little-endian: a string setting, then integer ones.
std::string xsettings(const std::vector<std::pair<std::string, std::int32_t>>& integers) {
    std::string out;
    auto word = [&](std::uint32_t v, int bytes) {
        for (int i = 0; i < bytes; ++i)
            out += static_cast<char>((v >> (8 * i)) & 0xff);
    };
    auto name = [&](const std::string& n) {
        word(static_cast<std::uint32_t>(n.size()), 2);
        out += n;
        out.append((4 - n.size() % 4) % 4, '\0');
        word(0, 4);  // last-change serial
    };
    out += '\0';
    out.append(3, '\0');
    word(7, 4);
    word(static_cast<std::uint32_t>(integers.size() + 1), 4);
    out += '\1';  // a string first, to be skipped
    out += '\0';
    name("Net/ThemeName");
    word(7, 4);
    out += "Adwaita";
    out += '\0';
    for (const auto& [n, v] : integers) {
        out += '\0';
        out += '\0';
        name(n);
        word(static_cast<std::uint32_t>(v), 4);
    }
    return out;
}

TEST(DesktopScale, ReadsEachSourceInItsOrderAndIgnoresNonsense) {
    const auto gnome =
        xsettingsIntegers(xsettings({{"Gdk/WindowScalingFactor", 2}, {"Xft/DPI", 196608}}));
    EXPECT_EQ(gnome.at("Xft/DPI"), 196608);
    EXPECT_FALSE(gnome.contains("Net/ThemeName"));
    EXPECT_TRUE(xsettingsIntegers(xsettings({{"Xft/DPI", 1}}).substr(0, 30)).empty());

    const std::string resources = "Xcursor.size:\t24\nXft.dpi:\t144\n";
    EXPECT_EQ(xftDpi(resources), 144.0);
    EXPECT_EQ(desktopScale({gnome, "3", resources}), 2.0);  // the window scale first
    EXPECT_EQ(desktopScale({{}, "3", resources}), 3.0);
    EXPECT_EQ(desktopScale({{}, std::nullopt, resources}), 1.5);
    EXPECT_EQ(desktopScale({xsettingsIntegers(xsettings({{"Xft/DPI", 192 * 1024}})), std::nullopt,
                            std::nullopt}),
              2.0);
    EXPECT_EQ(desktopScale({{{"Gdk/WindowScalingFactor", 0}}, "x", "Xft.dpi: 40\n"}), 1.0);
}

}  // namespace
}  // namespace zd::x11
