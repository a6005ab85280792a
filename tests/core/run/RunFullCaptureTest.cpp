// The whole run from the take button to the saved files: its calls, waits and texts in order.

#include "RunFixture.h"
#include "run/RunOutput.h"

namespace zd::testing {
namespace {

using Strings = std::vector<std::string>;

TEST_F(RunFixture, TypicalRunTwoLanguagesBothAppearancesInExactOrder) {
    services.menuBarImage = Image(10, 1);
    services.menuTitles = {"File", "Edit"};
    services.targets = {CaptureTarget{200, "Notes", "Untitled", 60, "com.example.notes", {}}};
    Nanos savedAt{};
    bool revertingDuringRevert = false;
    services.onCall = [&](const std::string& entry) {
        if (entry.rfind("saveAll", 0) == 0)
            savedAt = clock.now();
        if (entry.rfind("revertToOriginalLanguage", 0) == 0)
            revertingDuringRevert = view->revertInProgress();
    };
    bool pulsingAtCleanUp = false;
    auto watch = view->progress.subscribe([&](CaptureProgressModel::Field field) {
        if (field == CaptureProgressModel::Field::shotsTotal && !view->isWorking)
            pulsingAtCleanUp = view->pulseRevealButton;
    });

    runToEnd();

    const std::string stamp = stampString(clock.wallOrigin + 7800ms);
    const std::string root = "/shots/Notes \u2014 " + stamp;
    // One step a line.
    // clang-format off
    const Strings expected{
        "saveFolderURL", "saveFolderURL", "done: 0", "total: 4", "stage: ",
        "currentLanguageCode com.example.notes",
        // The first language needs a relaunch: the target is only raised, no countdown yet.
        "runningApplication 42", "activate 42", "wait 0.4s",
        "captureMenuBarImage", "ocr Notes", "captureMenuBarImage",
        "stage: Switching Notes to German (1/2)\u2026",
            "status: Switching Notes to German (1/2)\u2026",
        "relaunch 7 de 1.2 12", "wait 0.6s",
        "runningApplication 43", "activate 43",
            "status: Posing German Notes \u2014 capturing in\u2026",
        "countdown: 3", "wait 1s", "countdown: 2", "wait 1s", "countdown: 1", "wait 1s",
            "countdown: 0", "wait 0.2s",
        "stage: Capturing German\u2026", "readMenuTitles 43",
        "accessibility prompt=false", "applyWindowSize half 43", "wait 0.3s",
        "status: Capturing light + dark for German\u2026", "currentAppearance (worker)",
        "setAppearance light (worker)", "wait 0.6s", "captureWindow 101 in light",
        "setAppearance dark (worker)", "wait 0.6s", "captureWindow 101 in dark",
        "setAppearance light (worker)", "done: 2",
        // The second language: relaunched, and no countdown without the repeat switch.
        "stage: Switching Notes to French (2/2)\u2026",
            "status: Switching Notes to French (2/2)\u2026",
        "relaunch 101 fr 1.2 12", "wait 0.6s",
        "stage: Capturing French\u2026", "readMenuTitles 44",
        "accessibility prompt=false", "applyWindowSize half 44", "wait 0.3s",
        "status: Capturing light + dark for French\u2026", "currentAppearance (worker)",
        "setAppearance light (worker)", "wait 0.6s", "captureWindow 102 in light",
        "setAppearance dark (worker)", "wait 0.6s", "captureWindow 102 in dark",
        "setAppearance light (worker)", "done: 4",
        "saveAll 4 to " + root + " prefix ''", "status: Saved 4 shots to " + root + ".",
        "activateThisProgram", "wait 1.6s", "countdown: 0", "done: 0", "total: 0", "stage: ",
        // Detached, after the run has ended.
        "revertToOriginalLanguage com.example.notes", "currentTargets",
        // The selection found again: the target's own language is read anew.
        "currentLanguageCode com.example.notes (worker)",
    };
    // clang-format on
    EXPECT_EQ(log.entries(), expected);
    EXPECT_EQ(savedAt, 7800ms);
    EXPECT_EQ(clock.now(), 9400ms);  // the reveal button's pulse ends last

    EXPECT_EQ(savedShots(), (Strings{"de light", "de dark", "fr light", "fr dark"}));
    EXPECT_NE(services.savedShots[0].id, services.savedShots[1].id);
    EXPECT_EQ(view->detectedMenuTitles, (Strings{"File", "Edit"}));
    ASSERT_TRUE(view->capturedMenuBarImage);
    EXPECT_EQ(view->capturedMenuBarImage->width(), 10);
    EXPECT_EQ(view->tileState().statusItemsLeftFraction, 0.8);
    EXPECT_EQ(view->menuBar.appName, "Notes");
    EXPECT_EQ(view->lastRunRoot, root);
    EXPECT_EQ(view->destinationMode, DestinationMode::group);
    EXPECT_TRUE(pulsingAtCleanUp);
    EXPECT_FALSE(view->pulseRevealButton);
    EXPECT_TRUE(revertingDuringRevert);
    EXPECT_FALSE(view->revertInProgress());
    EXPECT_FALSE(view->isWorking);
    EXPECT_FALSE(view->captureTask);
    EXPECT_EQ(view->selectedTargetID, 200u);  // found again after the revert
    EXPECT_EQ(services.systemAppearance, AppearanceMode::light);
}

// Which poses, relaunches and captures a run makes, by language state and countdown settings.
struct PoseCase {
    const char* name;
    std::vector<LanguageSelection> languages;
    bool countdownAfterRelaunch;
    int countdownSeconds;
    Strings expected;
};

class RunPoses : public RunFixture, public ::testing::WithParamInterface<PoseCase> {};

TEST_P(RunPoses, PosesRelaunchesAndCapturesInOrder) {
    const PoseCase& c = GetParam();
    view->languages = c.languages;
    view->countdownAfterRelaunch = c.countdownAfterRelaunch;
    view->countdownSeconds = c.countdownSeconds;
    view->enabledAppearances = {AppearanceMode::dark};
    runToEnd();
    EXPECT_EQ(only({"activate ", "relaunch", "status: Posing", "captureWindow"}), c.expected);
    EXPECT_TRUE(logged("saveAll"));
}

const LanguageSelection de{"de", "German"}, fr{"fr", "French"}, en{"en", "English"},
    enGB{"en-GB", "English (UK)"};

const std::string posingDe = "status: Posing German Notes \u2014 capturing in\u2026";
const std::string posingNotes = "status: Posing Notes \u2014 capturing in\u2026";

// The plain two-language sequence is the typical run's, above.
// clang-format off
INSTANTIATE_TEST_SUITE_P(Languages, RunPoses, ::testing::Values(
    PoseCase{"RepeatAfterEachLanguageSwitch", {de, fr}, true, 3,
             {"activate 42", "relaunch 7 de 1.2 12", "activate 43", posingDe,
              "captureWindow 101 in dark", "relaunch 101 fr 1.2 12", "activate 44",
              "status: Posing French Notes \u2014 capturing in\u2026",
                  "captureWindow 102 in dark"}},
    PoseCase{"FirstCurrentSecondNot", {en, fr}, false, 3,
             {"activate 42", posingNotes, "captureWindow 7 in dark", "relaunch 7 fr 1.2 12",
              "captureWindow 101 in dark"}},
    PoseCase{"CountdownZeroNeverRaisesAfterRelaunch", {de, fr}, true, 0,
             {"activate 42", "relaunch 7 de 1.2 12", "captureWindow 101 in dark",
              "relaunch 101 fr 1.2 12", "captureWindow 102 in dark"}},
    PoseCase{"MatchingLanguagesNeedNoRelaunchNorPose", {en, enGB}, true, 3,
             {"activate 42", posingNotes, "captureWindow 7 in dark", "captureWindow 7 in dark"}}),
    [](const auto& p) { return std::string(p.param.name); });
// clang-format on

TEST_F(RunFixture, SingleWindowWithoutLanguagesIsOnePassInTheCurrentLanguage) {
    view->languages.clear();
    view->enabledAppearances = {AppearanceMode::light};
    runToEnd();
    EXPECT_TRUE(logged("currentLanguageCode"));
    EXPECT_FALSE(logged("relaunch"));
    EXPECT_EQ(
        only({"stage: Capturing", "status: Capturing", "status: Saved"}),
        (Strings{"stage: Capturing Current\u2026", "status: Capturing light for Current\u2026",
                 "status: Saved 1 shot to " + services.savedRoot + "."}));
    EXPECT_EQ(savedShots(), Strings{" light"});
    // No languages: nothing to revert; the selection is looked for at once.
    EXPECT_FALSE(logged("revertToOriginalLanguage"));
    EXPECT_TRUE(logged("currentTargets"));
}

TEST_F(RunFixture, NothingHappensWithoutTargetInSingleWindow) {
    view->selectedTargetID = 99;  // its window has gone
    view->takeShots();
    EXPECT_TRUE(clock.runUntilIdle());
    EXPECT_TRUE(log.entries().empty());
    EXPECT_EQ(view->progress.statusMessage(), "Pick a window, then Take shots.");
}

TEST_F(RunFixture, AsksForASaveFolderAndEndsSilentlyWhenCancelled) {
    services.saveFolder.reset();
    view->takeShots();
    EXPECT_EQ(log.entries(),
              (Strings{"saveFolderURL", "chooseFolder Choose a folder for Zephyrdock output",
                       "saveFolderURL"}));
    EXPECT_FALSE(view->isWorking);
}

TEST_F(RunFixture, ChosenSaveFolderIsStoredAndUsed) {
    services.saveFolder.reset();
    dialogs.chosenFolder = "/picked";
    view->languages.clear();
    runToEnd();
    EXPECT_TRUE(logged("status: Save folder: /picked"));
    EXPECT_EQ(services.savedRoot.rfind("/picked/Notes \u2014 ", 0), 0u);
}

// The folder names and the numbering of grouped files are RunOutput's; here, the view's part.
TEST_F(RunFixture, NextRunJoinsThePreviousOneWithTheVariantAsPrefix) {
    view->languages.clear();
    view->variantName = "Sidebar";
    runToEnd();
    const std::string first = services.savedRoot;
    runToEnd();  // the finished run flipped the destination to grouping
    EXPECT_EQ(services.savedRoot, first);
    EXPECT_EQ(services.savedVariantPrefix, "Sidebar");
}

TEST_F(RunFixture, AllWindowsRunMakesOnePassOfTheStackAndRevertsTheTarget) {
    view->captureScope = CaptureScope::allWindows;
    view->selectedTargetID.reset();
    view->compositeWindows = {
        {900, "Pad", "Doc", true}, {901, "Mail", "", false}, {902, "Term", "", true}};
    services.windowRecords = {ValueDictionary{
        {"kCGWindowNumber", 900}, {"kCGWindowOwnerPID", 50}, {"kCGWindowOwnerName", "Pad"}}};
    services.runningPids.insert(50);
    services.bundleOfPid[50] = "com.pad";
    services.records.lastEnabledSnapshot = {{900, "Pad \u2014 Doc"}, {902, "Term"}};
    services.records.lastCaptureOutcomes = {{"Pad \u2014 Doc", {0, 0, 10, 10}, true, false}};
    services.menuBarImage = Image(10, 1);

    runToEnd();

    EXPECT_EQ(view->menuBar.appName, "Pad");
    EXPECT_EQ(only({"currentLanguageCode", "relaunch", "accessibility", "applyWindowSize"}),
              Strings{});
    EXPECT_EQ(only({"status: Posing", "stage: Capturing", "buildLayout", "captureFullDisplay",
                    "alert", "revertToOriginalLanguage"}),
              (Strings{"status: Posing Pad \u2014 capturing in\u2026",
                       "stage: Capturing 2 windows\u2026", "buildLayout 2 enabled",
                       "captureFullDisplay in light", "captureFullDisplay in dark",
                       "alert 1 window didn't make it", "revertToOriginalLanguage com.pad"}));
    EXPECT_EQ(view->progress.statusMessage(), "Saved 2 shots to " + services.savedRoot + ".");
    EXPECT_EQ(savedShots(), (Strings{" light full", " dark full"}));
    EXPECT_EQ(services.savedShots[0].languageLabel, "2 windows");
}

TEST_F(RunFixture, AllWindowsRunGoesOnWithoutAnyTarget) {
    view->captureScope = CaptureScope::allWindows;
    view->selectedTargetID.reset();
    view->menuBar.appName = "Earlier";
    view->compositeWindows = {{900, "Pad", "Doc", true}};  // its window is gone
    view->enabledAppearances = {AppearanceMode::light};
    runToEnd();
    EXPECT_FALSE(logged("captureMenuBarImage"));
    EXPECT_FALSE(logged("revertToOriginalLanguage"));
    EXPECT_EQ(view->menuBar.appName, "Earlier");
    EXPECT_TRUE(logged("status: Posing the desktop \u2014 capturing in\u2026"));
    EXPECT_TRUE(logged("stage: Capturing 1 window\u2026"));
    EXPECT_TRUE(dialogs.alerts.empty());  // nothing selected was lost
    EXPECT_EQ(services.savedShots.size(), 1u);
}

TEST_F(RunFixture, UnreadableMenuBarKeepsTheEarlierReading) {
    view->detectedMenuTitles = {"Old"};
    view->capturedMenuBarImage = Image(3, 1);
    services.menuBarImage.reset();
    view->languages.clear();
    runToEnd();
    EXPECT_EQ(only({"captureMenuBarImage", "ocr"}),
              (Strings{"captureMenuBarImage", "captureMenuBarImage"}));
    EXPECT_EQ(view->detectedMenuTitles, (Strings{"Old"}));
    EXPECT_EQ(view->capturedMenuBarImage->width(), 3);
}

TEST_F(RunFixture, TakeButtonDoesNothingWhileARunIsGoing) {
    view->takeShots();
    const auto entries = log.entries().size();
    view->takeShots();
    EXPECT_EQ(log.entries().size(), entries);
    EXPECT_TRUE(clock.runUntilIdle());
    EXPECT_EQ(services.savedShots.size(), 4u);
}

}  // namespace
}  // namespace zd::testing
