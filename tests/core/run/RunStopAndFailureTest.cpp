// How a run ends when the user stops it or a step fails: what the user then reads, that no
// file is written, and that the appearance and the target's language are put back.

#include "RunFixture.h"

namespace zd::testing {
namespace {

using Strings = std::vector<std::string>;

// Timeline of the default run (de, fr, both appearances, countdown 3, English target):
// 0–0.4 raise; 0.4 relaunch de, 0.6 wait; 1.0–4.2 countdown; 4.2–4.5 resize; 4.5–5.1 light;
// 5.1–5.7 dark; 5.7 relaunch fr, 0.6 wait; 6.3–6.6 resize; 6.6–7.8 light and dark; save.
struct StopCase {
    const char* name;
    std::vector<LanguageSelection> languages;
    std::set<AppearanceMode> appearances;
    Nanos stopAt;
    std::string status;
    int captures;  // captures made before the run stopped
};

class RunStops : public RunFixture, public ::testing::WithParamInterface<StopCase> {};

TEST_P(RunStops, StopsAtItsCancellationPointsAndPutsThingsBack) {
    const StopCase& c = GetParam();
    view->languages = c.languages;
    view->enabledAppearances = c.appearances;
    services.systemAppearance = AppearanceMode::dark;  // the user's own mode before the run
    stopAt(c.stopAt);

    EXPECT_EQ(view->progress.statusMessage(), c.status);
    EXPECT_EQ(services.captureCount, c.captures);
    expectNothingSavedAndAllPutBack();
    EXPECT_FALSE(view->revertInProgress());
    EXPECT_FALSE(view->captureTask);
    EXPECT_EQ(view->progress.countdownRemaining(), 0);
    EXPECT_EQ(view->progress.shotsTotal(), 0);
    EXPECT_EQ(view->progress.captureStage(), "");
    EXPECT_FALSE(view->lastRunRoot);
}

const LanguageSelection de{"de", "German"}, fr{"fr", "French"}, en{"en", "English"};
const std::set<AppearanceMode> both{AppearanceMode::light, AppearanceMode::dark};
const std::set<AppearanceMode> lightOnly{AppearanceMode::light};
const std::string before = "Stopped before capture started.";
std::string unsaved(const char* shots) {
    return std::string("Stopped \u2014 ") + shots + " captured but not saved.";
}

INSTANTIATE_TEST_SUITE_P(
    Points, RunStops,
    ::testing::Values(
        StopCase{"DuringInitialCountdown", {en, de}, both, 1500ms, before, 0},
        StopCase{"DuringRaiseBeforeFirstRelaunch", {de, fr}, both, 200ms, before, 0},
        StopCase{"DuringWaitAfterRelaunch", {de, fr}, both, 700ms, unsaved("0 shots"), 0},
        // After a later countdown the run ends without a word of its own.
        StopCase{"DuringCountdownAfterRelaunch", {de, fr}, both, 2000ms, "Stopping\u2026", 0},
        // The resize wait runs out; the appearance wait that follows stops the language.
        StopCase{"DuringResize", {de, fr}, both, 4300ms, unsaved("0 shots"), 0},
        StopCase{"DuringLightWait", {de, fr}, both, 4800ms, unsaved("0 shots"), 0},
        StopCase{"DuringDarkWait", {de, fr}, both, 5400ms, unsaved("0 shots"), 1},
        StopCase{"DuringSecondRelaunchWait", {de, fr}, both, 6000ms, unsaved("2 shots"), 2},
        // One appearance: its wait doesn't stop the capture; the next language test does.
        StopCase{"DuringOneAppearanceWait", {de, fr}, lightOnly, 4700ms, unsaved("1 shot"), 1}),
    [](const auto& p) { return std::string(p.param.name); });

TEST_F(RunFixture, StopDuringCountdownLetsTheSecondsRunOutAtOnce) {
    view->languages = {en};
    stopAt(1500ms);
    EXPECT_EQ(only({"countdown", "wait 1s", "wait 0.2s", "status: Stop"}),
              (Strings{"countdown: 3", "wait 1s", "countdown: 2", "wait 1s",
                       "status: Stopping\u2026", "countdown: 1", "countdown: 0",
                       "status: Stopped before capture started.", "countdown: 0"}));
    EXPECT_EQ(clock.now(), 1500ms);
}

TEST_F(RunFixture, StopDuringRelaunchWaitsForTheRelaunchToEnd) {
    services.onCall = [&](const std::string& entry) {
        if (entry.rfind("relaunch", 0) == 0)
            view->cancelCapture();
    };
    view->takeShots();
    EXPECT_TRUE(clock.runUntilIdle());
    EXPECT_EQ(services.relaunchCount, 1);
    EXPECT_EQ(view->progress.statusMessage(), unsaved("0 shots"));
}

TEST_F(RunFixture, StopDuringACaptureDropsAllLanguagesTakenSoFar) {
    view->languages = {de, fr, {"it", "Italian"}};
    services.onCall = [&](const std::string& entry) {
        // The capture in progress runs to its end; the next language sees the stop.
        if (entry.rfind("captureWindow", 0) == 0 && services.captureCount == 4) {
            view->cancelCapture();
        }
    };
    runToEnd();
    EXPECT_EQ(view->progress.statusMessage(), unsaved("4 shots"));
    EXPECT_EQ(services.relaunchCount, 2);
    EXPECT_FALSE(logged("saveAll"));
}

TEST_F(RunFixture, CancelWithoutRunOnlySaysStopping) {
    view->cancelCapture();
    EXPECT_EQ(view->progress.statusMessage(), "Stopping\u2026");
}

// Failures of a step: one line of status, no file, the rest put back.
struct FailureCase {
    const char* name;
    std::function<void(FakeRunServices&)> script;
    std::string status;
};

class RunFailures : public RunFixture, public ::testing::WithParamInterface<FailureCase> {};

TEST_P(RunFailures, EndWithOneLineAndNoFile) {
    GetParam().script(services);
    services.systemAppearance = AppearanceMode::dark;
    runToEnd();
    EXPECT_EQ(view->progress.statusMessage(), GetParam().status);
    expectNothingSavedAndAllPutBack();
}

using Failure = LanguageRelauncher::Failure;
using S = FakeRunServices&;
constexpr auto captureFailure = CaptureFailure::of;

// clang-format off
INSTANTIATE_TEST_SUITE_P(Steps, RunFailures, ::testing::Values(
    FailureCase{"RelaunchFailed",
                [](S s) { s.relaunchFailures[0] = Failure::relaunchFailed("gone"); },
                "Couldn't relaunch target: gone"},
    FailureCase{"RelaunchTimedOutInSecondLanguage",
                [](S s) { s.relaunchFailures[1] = Failure::timedOut(); },
                "Target app didn't surface a window after relaunch \u2014 try a longer countdown "
                "or retry."},
    FailureCase{"RelaunchWithoutBundleID",
                [](S s) { s.relaunchFailures[0] = Failure::missingBundleID(); },
                "Couldn't switch language \u2014 Notes has no bundle ID."},
    FailureCase{"ScreenRecordingDenied",
                [](S s) { s.captureFailures[0] = captureFailure(CaptureError::permissionDenied); },
                "Screen Recording permission needed \u2014 System Settings \u2192 Privacy & "
                "Security."},
    // A failed dark shot loses the light one of the same language, and the language before.
    FailureCase{"DarkCaptureOfSecondLanguageFails",
                [](S s) { s.captureFailures[3] = captureFailure(CaptureError::windowNotFound); },
                "Capture failed: The operation couldn\u2019t be completed. "
                "(Zephyrdock.CaptureError error 0.)"},
    FailureCase{"DarkModeDenied", [](S s) { s.failingSets = {AppearanceMode::light}; },
                "Couldn't toggle Dark Mode \u2014 grant Zephyrdock access to System Events in "
                "Privacy & "
                "Security \u2192 Automation, then retry."}),
    [](const auto& p) { return std::string(p.param.name); });
// clang-format on

TEST_F(RunFixture, TargetWithoutBundleIDPosesFirstThenCannotSwitch) {
    notes.bundleId = "";  // an empty identity counts as none
    view->targets = {notes};
    services.relaunchFailures[0] = LanguageRelauncher::Failure::missingBundleID();
    runToEnd();
    EXPECT_FALSE(logged("currentLanguageCode"));
    EXPECT_TRUE(logged("status: Posing Notes \u2014 capturing in\u2026"));
    EXPECT_EQ(view->progress.statusMessage(),
              "Couldn't switch language \u2014 Notes has no bundle ID.");
    // Nothing to revert: the selection is looked for again at once.
    EXPECT_FALSE(logged("revertToOriginalLanguage"));
    EXPECT_TRUE(logged("currentTargets"));
}

TEST_F(RunFixture, OneAppearanceGoesOnWhenDarkModeIsDenied) {
    view->enabledAppearances = {AppearanceMode::dark};
    services.failingSets = {AppearanceMode::dark};
    runToEnd();
    EXPECT_EQ(services.savedShots.size(), 2u);
    EXPECT_EQ(view->progress.statusMessage(), "Saved 2 shots to " + services.savedRoot + ".");
}

TEST_F(RunFixture, FailedSaveSaysSoAndKeepsTheDestination) {
    services.saveFailure = OutputError{"NSCocoaErrorDomain", 513, "You don't have permission."};
    runToEnd();
    EXPECT_EQ(view->progress.statusMessage(), "Save failed: You don't have permission.");
    EXPECT_FALSE(logged("activateThisProgram"));
    EXPECT_FALSE(view->lastRunRoot);
    EXPECT_EQ(view->destinationMode, DestinationMode::newDestination);
    EXPECT_FALSE(view->pulseRevealButton);
}

}  // namespace
}  // namespace zd::testing
