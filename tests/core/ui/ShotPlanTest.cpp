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
    Environment env{.clock = &clock, .screens = &screens};
    ContentView view{env, services};
};

TEST_F(ShotPlan, EntriesLanguagesOutsideAppearancesInside) {
    const std::set<AppearanceMode> both{AppearanceMode::dark, AppearanceMode::light};
    const std::set<AppearanceMode> dark{AppearanceMode::dark};
    struct Case {
        CaptureScope scope;
        std::vector<LanguageSelection> languages;
        std::set<AppearanceMode> appearances;
        Strings ids;
        int count;
    };
    constexpr auto single = CaptureScope::singleWindow;
    const std::vector<Case> cases{
        {single, {de, fr}, both, {"de-light", "de-dark", "fr-light", "fr-dark"}, 4},
        {CaptureScope::allWindows, {de, fr}, both, {"current-light", "current-dark"}, 2},
        {single, {}, dark, {"current-dark"}, 1},
        {single, {ptBR}, dark, {"pt-BR-dark"}, 1},
        {single, {de, fr}, {}, {}, 2},  // no tile, yet the run takes one shot per language
    };
    for (const auto& c : cases) {
        view.captureScope = c.scope;
        view.languages = c.languages;
        view.enabledAppearances = c.appearances;
        EXPECT_EQ(ids(), c.ids);
        EXPECT_EQ(view.plannedShotCount(), c.count);
    }
    view.languages.clear();
    view.enabledAppearances = {AppearanceMode::light};
    const PlanEntry current{"current-light", "", "Current", AppearanceMode::light};
    EXPECT_EQ(view.planEntries(), std::vector<PlanEntry>{current});
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

TEST_F(ShotPlan, RepeatAfterLanguageOnlyWhenSomeLanguageNeedsARelaunch) {
    struct Case {
        CaptureScope scope;
        std::string current;
        Strings codes;
        bool canRepeat;
    };
    for (const auto& c : {Case{CaptureScope::singleWindow, "en", {"en-GB", "en"}, false},
                          Case{CaptureScope::singleWindow, "en", {"en", "de"}, true},
                          Case{CaptureScope::singleWindow, "", {"de"}, false},
                          Case{CaptureScope::singleWindow, "en", {}, false},
                          Case{CaptureScope::allWindows, "en", {"de"}, false}}) {
        view.captureScope = c.scope;
        view.targetCurrentLangCode = c.current;
        view.languages.clear();
        for (const auto& code : c.codes)
            view.languages.push_back({code, code});
        EXPECT_EQ(view.canRepeatAfterLanguage(), c.canRepeat) << c.current;
    }
}

TEST_F(ShotPlan, PlaceholderIsTheScreenTimesThePresetsFactors) {
    struct Case {
        CaptureScope scope;
        WindowSizePreset preset;
        bool hasScreen;
        Size expected;
    };
    for (const auto& c :
         {Case{CaptureScope::singleWindow, WindowSizePreset::full, true, {2782.08, 1699.2}},
          Case{CaptureScope::singleWindow, WindowSizePreset::current, true, {2116.8, 1227.2}},
          Case{CaptureScope::singleWindow, WindowSizePreset::half, false, {1440, 900}},
          Case{CaptureScope::allWindows, WindowSizePreset::half, true, {3024, 1890}}}) {
        view.captureScope = c.scope;
        view.sizePreset = c.preset;
        screens.main.reset();
        if (c.hasScreen)
            screens.main = ScreenInfo{{0, 0, 1512, 982}, {0, 0, 1512, 944}, 2.0};
        const Size size = view.placeholderWindowSize(view.canvasSize());
        EXPECT_NEAR(size.width, c.expected.width, 1e-6);
        EXPECT_NEAR(size.height, c.expected.height, 1e-6);
    }
}

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
