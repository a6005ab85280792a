// The shot plan derived from the window's state: tiles, counts and what the controls allow.

#include <gtest/gtest.h>

#include "testing/EventLog.h"
#include "testing/FakeRunServices.h"
#include "testing/FakeScreenBackend.h"
#include "testing/ManualClock.h"
#include "ui/ContentView.h"

namespace zd::testing {
namespace {

using Strings = std::vector<std::string>;
const LanguageSelection de{"de", "German"};
const LanguageSelection fr{"fr", "French"};
const LanguageSelection ptBR{"pt-BR", "Portuguese (Brazil)"};

class ShotPlan : public ::testing::Test {
  protected:
    ShotPlan() {
        env.clock = &clock;
        env.screens = &screens;
    }
    Strings ids() const {
        Strings out;
        for (const auto& entry : view.planEntries())
            out.push_back(entry.id);
        return out;
    }

    EventLog log;
    ManualClock clock;
    FakeScreenBackend screens;
    FakeRunServices services{log};
    Environment env;
    ContentView view{env, services};
};

struct PlanCase {
    const char* name;
    CaptureScope scope;
    std::vector<LanguageSelection> languages;
    std::set<AppearanceMode> appearances;
    Strings ids;
    int count;
};

class PlanEntries : public ShotPlan, public ::testing::WithParamInterface<PlanCase> {};

TEST_P(PlanEntries, IdsInOrderAndCount) {
    const PlanCase& c = GetParam();
    view.captureScope = c.scope;
    view.languages = c.languages;
    view.enabledAppearances = c.appearances;
    EXPECT_EQ(ids(), c.ids);
    EXPECT_EQ(view.plannedShotCount(), c.count);
}

const std::set<AppearanceMode> both{AppearanceMode::dark, AppearanceMode::light};

INSTANTIATE_TEST_SUITE_P(
    Cases, PlanEntries,
    ::testing::Values(
        PlanCase{"LanguagesOutsideAppearancesInside",
                 CaptureScope::singleWindow,
                 {de, fr},
                 both,
                 {"de-light", "de-dark", "fr-light", "fr-dark"},
                 4},
        PlanCase{"AllWindowsIgnoresLanguages",
                 CaptureScope::allWindows,
                 {de, fr},
                 both,
                 {"current-light", "current-dark"},
                 2},
        PlanCase{"NoLanguagesOnlyDark",
                 CaptureScope::singleWindow,
                 {},
                 {AppearanceMode::dark},
                 {"current-dark"},
                 1},
        PlanCase{"CodeKeptAsItIs",
                 CaptureScope::singleWindow,
                 {ptBR},
                 {AppearanceMode::dark},
                 {"pt-BR-dark"},
                 1},
        // No tile, yet the run would take one shot per language.
        PlanCase{"NoAppearanceCountsLanguages", CaptureScope::singleWindow, {de, fr}, {}, {}, 2}),
    [](const auto& p) { return std::string(p.param.name); });

TEST_F(ShotPlan, CurrentLanguageTileHasEmptyCodeAndLabelCurrent) {
    view.enabledAppearances = {AppearanceMode::light};
    const auto entries = view.planEntries();
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_EQ(entries[0], (PlanEntry{"current-light", "", "Current", AppearanceMode::light}));
}

TEST_F(ShotPlan, CaptureDisabledFollowsScopeOnly) {
    view.selectedTargetID = 7;
    view.compositeWindows = {{1, "Pad", "", false}};
    view.captureScope = CaptureScope::allWindows;
    EXPECT_TRUE(view.captureDisabled());
    view.captureScope = CaptureScope::singleWindow;
    EXPECT_FALSE(view.captureDisabled());
    view.isWorking = true;
    EXPECT_TRUE(view.captureDisabled());
    view.isWorking = false;
    view.selectedTargetID.reset();
    EXPECT_TRUE(view.captureDisabled());
    view.captureScope = CaptureScope::allWindows;
    view.compositeWindows[0].enabled = true;
    EXPECT_FALSE(view.captureDisabled());
}

struct RepeatCase {
    const char* name;
    CaptureScope scope;
    std::string current;
    Strings codes;
    bool canRepeat;
};

class RepeatAfterLanguage : public ShotPlan, public ::testing::WithParamInterface<RepeatCase> {};

TEST_P(RepeatAfterLanguage, OnlyWhenSomeLanguageNeedsARelaunch) {
    const RepeatCase& c = GetParam();
    view.captureScope = c.scope;
    view.targetCurrentLangCode = c.current;
    for (const auto& code : c.codes)
        view.languages.push_back({code, code});
    EXPECT_EQ(view.canRepeatAfterLanguage(), c.canRepeat);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, RepeatAfterLanguage,
    ::testing::Values(
        RepeatCase{"AllMatch", CaptureScope::singleWindow, "en", {"en-GB", "en"}, false},
        RepeatCase{"OneDiffers", CaptureScope::singleWindow, "en", {"en", "de"}, true},
        RepeatCase{"UnknownCurrent", CaptureScope::singleWindow, "", {"de"}, false},
        RepeatCase{"NoLanguages", CaptureScope::singleWindow, "en", {}, false},
        RepeatCase{"AllWindows", CaptureScope::allWindows, "en", {"de"}, false}),
    [](const auto& p) { return std::string(p.param.name); });

struct PlaceholderCase {
    const char* name;
    CaptureScope scope;
    WindowSizePreset preset;
    bool hasScreen;
    Size expected;
};

class PlaceholderSize : public ShotPlan, public ::testing::WithParamInterface<PlaceholderCase> {};

TEST_P(PlaceholderSize, ScreenTimesPresetFactors) {
    const PlaceholderCase& c = GetParam();
    view.captureScope = c.scope;
    view.sizePreset = c.preset;
    if (c.hasScreen)
        screens.main = ScreenInfo{{0, 0, 1512, 982}, {0, 0, 1512, 944}, 2.0};
    const Size size = view.placeholderWindowSize(view.canvasSize());
    EXPECT_NEAR(size.width, c.expected.width, 1e-6);
    EXPECT_NEAR(size.height, c.expected.height, 1e-6);
}

INSTANTIATE_TEST_SUITE_P(Cases, PlaceholderSize,
                         ::testing::Values(PlaceholderCase{"FullIsWiderThanTall",
                                                           CaptureScope::singleWindow,
                                                           WindowSizePreset::full,
                                                           true,
                                                           {2782.08, 1699.2}},
                                           PlaceholderCase{"CurrentFactors",
                                                           CaptureScope::singleWindow,
                                                           WindowSizePreset::current,
                                                           true,
                                                           {2116.8, 1227.2}},
                                           PlaceholderCase{"NoScreenFallsBack",
                                                           CaptureScope::singleWindow,
                                                           WindowSizePreset::half,
                                                           false,
                                                           {1440.0, 900.0}},
                                           PlaceholderCase{"AllWindowsFixed",
                                                           CaptureScope::allWindows,
                                                           WindowSizePreset::half,
                                                           true,
                                                           {3024.0, 1890.0}}),
                         [](const auto& p) { return std::string(p.param.name); });

TEST_F(ShotPlan, StartsFromLoadedSettings) {
    Preferences::LoadedSettings settings;
    settings.captureScope = CaptureScope::allWindows;
    settings.countdownSeconds = -2;  // loads as it stands
    settings.menuBarHasBackground = false;
    settings.languages = {de};
    ContentView loaded(env, services, settings);
    EXPECT_EQ(loaded.captureScope, CaptureScope::allWindows);
    EXPECT_EQ(loaded.countdownSeconds, -2);
    EXPECT_FALSE(loaded.menuBar.hasBackground);
    EXPECT_EQ(loaded.languages, std::vector<LanguageSelection>{de});
    EXPECT_EQ(loaded.destinationMode, DestinationMode::newDestination);
    EXPECT_EQ(loaded.progress.statusMessage(), "Pick a window, then Take shots.");
}

}  // namespace
}  // namespace zd::testing
