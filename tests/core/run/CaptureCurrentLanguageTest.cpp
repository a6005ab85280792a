// One language state: sizing the window, switching the system's appearance around the
// captures, and putting it back, called directly on a view outside a run.

#include "RunFixture.h"

namespace zd::testing {
namespace {

using Strings = std::vector<std::string>;
using Shots = std::vector<CapturedShot>;

class CaptureCurrentLanguage : public RunFixture {
  protected:
    // Runs captureCurrentLanguage for Notes in German to its end.
    Expected<Shots, RunError> capture(std::optional<CaptureTarget> target) {
        std::optional<Expected<Shots, RunError>> result;
        auto body = [&]() -> Task<void> {
            result.emplace(co_await view->captureCurrentLanguage(target, "de", "German"));
        };
        spawn(body());
        EXPECT_TRUE(clock.runUntilIdle());
        return std::move(*result);
    }
};

struct SizingCase {
    const char* name;
    CaptureScope scope;
    WindowSizePreset preset;
    bool trusted;
    Strings expected;
};

class WindowSizing : public CaptureCurrentLanguage,
                     public ::testing::WithParamInterface<SizingCase> {};

TEST_P(WindowSizing, AsksAccessibilityAndSizesOnlyWhereItApplies) {
    const SizingCase& c = GetParam();
    view->captureScope = c.scope;
    view->sizePreset = c.preset;
    services.accessibilityTrusted = c.trusted;
    ASSERT_TRUE(capture(notes));
    EXPECT_EQ(only({"accessibility", "applyWindowSize", "wait 0.3s"}), c.expected);
}

constexpr auto single = CaptureScope::singleWindow;
using enum WindowSizePreset;

// clang-format off
INSTANTIATE_TEST_SUITE_P(Presets, WindowSizing, ::testing::Values(
    SizingCase{"GrantedAsksOnceWithoutPrompt", single, full, true,
               {"accessibility prompt=false", "applyWindowSize full 42", "wait 0.3s"}},
    SizingCase{"NotGrantedPromptsAndSizesAllTheSame", single, threeQ, false,
               {"accessibility prompt=false", "accessibility prompt=true",
                   "applyWindowSize threeQ 42", "wait 0.3s"}},
    SizingCase{"CurrentSizeLeavesTheWindowAlone", single, current, false, {}},
    SizingCase{"AllWindowsNeverSizes", CaptureScope::allWindows, half, false, {}}),
    [](const auto& p) { return std::string(p.param.name); });
// clang-format on

struct AppearanceCase {
    const char* name;
    std::set<AppearanceMode> enabled;
    std::optional<AppearanceMode> before;
    Strings expected;  // appearance calls and captures, in order
};

class AppearanceSwitching : public CaptureCurrentLanguage,
                            public ::testing::WithParamInterface<AppearanceCase> {};

TEST_P(AppearanceSwitching, SwitchesCapturesAndRestores) {
    const AppearanceCase& c = GetParam();
    view->enabledAppearances = c.enabled;
    services.systemAppearance = c.before;
    auto shots = capture(notes);
    ASSERT_TRUE(shots);
    EXPECT_EQ(only({"currentAppearance", "setAppearance", "captureWindow"}), c.expected);
    for (const auto& shot : *shots) {
        EXPECT_EQ(shot.languageCode, "de");
        EXPECT_EQ(shot.languageLabel, "German");
        EXPECT_EQ(shot.image.width(), 4);
    }
}

constexpr auto light = AppearanceMode::light;
constexpr auto dark = AppearanceMode::dark;

// clang-format off
INSTANTIATE_TEST_SUITE_P(Modes, AppearanceSwitching, ::testing::Values(
    // Both: every appearance call leaves the UI thread.
    AppearanceCase{"BothFromDark", {dark, light}, dark,
                   {"currentAppearance (worker)", "setAppearance light (worker)",
                       "captureWindow 7 in light",
                    "setAppearance dark (worker)", "captureWindow 7 in dark",
                        "setAppearance dark (worker)"}},
    // One: the calls hold the UI thread.
    AppearanceCase{"LightOnlyFromDark", {light}, dark,
                   {"currentAppearance", "setAppearance light", "captureWindow 7 in light",
                       "setAppearance dark"}},
    AppearanceCase{"UnknownPriorModeIsNotRestored", {light}, std::nullopt,
                   {"currentAppearance", "setAppearance light", "captureWindow 7 in light"}},
    AppearanceCase{"NoneEnabledTakesOneDarkShot", {}, light,
                   {"currentAppearance", "setAppearance dark", "captureWindow 7 in dark",
                       "setAppearance light"}}),
    [](const auto& p) { return std::string(p.param.name); });
// clang-format on

TEST_F(CaptureCurrentLanguage, DarkCaptureFailureRestoresAndReturnsNoShot) {
    services.systemAppearance = AppearanceMode::dark;
    services.captureFailures[1] = CaptureFailure::of(CaptureError::noContent);
    auto shots = capture(notes);
    ASSERT_FALSE(shots);
    EXPECT_EQ(std::get<CaptureFailure>(shots.error()), CaptureFailure::of(CaptureError::noContent));
    EXPECT_EQ(services.systemAppearance, AppearanceMode::dark);
}

TEST_F(CaptureCurrentLanguage, FailedSwitchPassesInOneAppearanceAndEndsBoth) {
    view->enabledAppearances = {AppearanceMode::dark};
    services.failingSets = {AppearanceMode::dark};
    auto shots = capture(notes);
    ASSERT_TRUE(shots);
    ASSERT_EQ(shots->size(), 1u);
    EXPECT_EQ((*shots)[0].mode, AppearanceMode::dark);  // named as wanted, taken as it was
    EXPECT_TRUE(logged("captureWindow 7 in light"));

    log.clear();
    view->enabledAppearances = {AppearanceMode::light, AppearanceMode::dark};
    EXPECT_FALSE(capture(notes));
    EXPECT_EQ(only({"captureWindow"}), std::vector<std::string>{"captureWindow 7 in light"});
}

TEST_F(CaptureCurrentLanguage, LayoutFailureEndsBeforeAnyAppearanceChange) {
    view->captureScope = CaptureScope::allWindows;
    services.layoutFailure = CaptureFailure::of(CaptureError::noDisplay);
    auto shots = capture(std::nullopt);
    ASSERT_FALSE(shots);
    EXPECT_FALSE(logged("currentAppearance"));
    EXPECT_FALSE(logged("setAppearance"));
}

TEST_F(CaptureCurrentLanguage, SingleWindowWithoutTargetIsWindowNotFound) {
    auto shots = capture(std::nullopt);
    ASSERT_FALSE(shots);
    EXPECT_EQ(std::get<CaptureFailure>(shots.error()),
              CaptureFailure::of(CaptureError::windowNotFound));
    EXPECT_EQ(services.systemAppearance, AppearanceMode::light);
}

TEST_F(CaptureCurrentLanguage, CountdownOfOneShowsOneForASecondAndNoneStillRaisesAndWaits) {
    view->countdownSeconds = 1;
    auto pose = [&](std::optional<CaptureTarget> target) {
        auto body = [&]() -> Task<void> { co_await view->raiseAndCountdown(target, "Posing"); };
        spawn(body());  // the closure outlives the coroutine, which refers to its captures
        EXPECT_TRUE(clock.runUntilIdle());
    };
    pose(std::nullopt);
    EXPECT_EQ(log.entries(), (Strings{"status: Posing the desktop \u2014 capturing in\u2026",
                                      "countdown: 1", "wait 1s", "countdown: 0", "wait 0.2s"}));
    EXPECT_EQ(clock.now(), 1200ms);
    log.clear();
    view->countdownSeconds = 0;
    pose(notes);
    EXPECT_EQ(log.entries(), (Strings{"runningApplication 42", "activate 42", "wait 0.2s"}));
}

}  // namespace
}  // namespace zd::testing
