// Which titles a picture's menu bar carries: the application's own read through accessibility,
// the recognised ones, the configured ones, then defaults in the picture's language.

#include "composition/MenuTitles.h"

#include <gtest/gtest.h>

#include "../run/RunFixture.h"
#include "model/LanguageSelection.h"

namespace zd::testing {
namespace {

using Strings = std::vector<std::string>;
using Bars = std::vector<Strings>;

TEST(MenuTitles, TheFirstBarWithTitlesCountsAndNoBarIsAnEmptyList) {
    EXPECT_EQ(MenuTitles::fromMenuBars(std::nullopt), std::nullopt);
    EXPECT_EQ(MenuTitles::fromMenuBars(Bars{}), Strings{});
    EXPECT_EQ(MenuTitles::fromMenuBars(Bars{{" ", ""}, {" Datei ", "", "Hilfe"}}),
              (Strings{"Datei", "Hilfe"}));
}

TEST(MenuTitles, DefaultsInEveryCatalogLanguageByCodeOrItsFirstPart) {
    for (const auto& language : LanguageCatalog::common())
        EXPECT_EQ(MenuTitles::defaults(language.code).size(), 5u) << language.code;
    EXPECT_EQ(MenuTitles::defaults("de"),
              (Strings{"Ablage", "Bearbeiten", "Darstellung", "Fenster", "Hilfe"}));
    EXPECT_EQ(MenuTitles::defaults("de-AT"), MenuTitles::defaults("de"));
    EXPECT_EQ(MenuTitles::defaults("pt"), MenuTitles::defaults("pt-BR"));
    EXPECT_NE(MenuTitles::defaults("zh-Hans"), MenuTitles::defaults("zh-Hant"));
    EXPECT_TRUE(MenuTitles::defaults("").empty());
    EXPECT_TRUE(MenuTitles::defaults("xx").empty());
}

struct SourceCase {
    const char* name;
    std::optional<Strings> accessible;
    Strings recognised;
    Strings configured;
    const char* code;
    Strings expected;
};

class MenuTitleSources : public ::testing::TestWithParam<SourceCase> {};

TEST_P(MenuTitleSources, FirstSourceWithTitlesWins) {
    const SourceCase& c = GetParam();
    EXPECT_EQ(MenuTitles::forPicture(c.accessible, c.recognised, c.configured, c.code), c.expected);
}

const Strings de = MenuTitles::defaults("de");

INSTANTIATE_TEST_SUITE_P(
    Order, MenuTitleSources,
    ::testing::Values(
        SourceCase{"OwnMenus", Strings{"Datei"}, {"File"}, {"Mine"}, "de", {"Datei"}},
        SourceCase{"UnreadFallsToRecognised", std::nullopt, {"File"}, {"Mine"}, "de", {"File"}},
        SourceCase{"NoMenuBarSkipsRecognised", Strings{}, {"File"}, {"Mine"}, "de", {"Mine"}},
        SourceCase{"NoMenuBarInGerman", Strings{}, {"File"}, {}, "de", de},
        SourceCase{"NothingReadInGerman", std::nullopt, {}, {}, "de", de},
        SourceCase{"UnknownLanguageLeavesItToTheRenderer", std::nullopt, {}, {}, "xx", {}}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST_F(RunFixture, EachLanguagesShotsCarryTheMenusReadAfterItsRelaunch) {
    services.accessibleMenuTitles = {{43, {"Datei", "Hilfe"}}};  // the German relaunch
    runToEnd();
    EXPECT_EQ(
        only({"readMenuTitles", "captureWindow"}),
        (Strings{"readMenuTitles 43", "captureWindow 101 in light", "captureWindow 101 in dark",
                 "readMenuTitles 44", "captureWindow 102 in light", "captureWindow 102 in dark"}));
    ASSERT_EQ(services.savedShots.size(), 4u);
    EXPECT_EQ(services.savedShots[1].menuTitles, (Strings{"Datei", "Hilfe"}));
    EXPECT_EQ(services.savedShots[2].menuTitles, std::nullopt);
}

}  // namespace
}  // namespace zd::testing
