// What a run says about failures, the summary of a multiple-windows run, and finding the
// target again after a run.

#include "RunFixture.h"
#include "run/AllWindowsSummary.h"
#include "run/RunTexts.h"

namespace zd::testing {
namespace {

using Strings = std::vector<std::string>;

struct ErrorCase {
    const char* name;
    RunError error;
    std::string status;
    HostPlatform platform = HostPlatform::macOS;
};

class ErrorWords : public ::testing::TestWithParam<ErrorCase> {};

TEST_P(ErrorWords, FirstFittingTestWritesTheStatus) {
    EXPECT_EQ(RunTexts::captureFailure(GetParam().error, GetParam().platform), GetParam().status);
}

const std::string generic = "The operation couldn\u2019t be completed. ";

using Kind = AppearanceController::Failure::Kind;
constexpr auto x11 = HostPlatform::x11;
constexpr auto failure = CaptureFailure::of;

// clang-format off
INSTANTIATE_TEST_SUITE_P(Failures, ErrorWords, ::testing::Values(
    ErrorCase{"PermissionDenied", failure(CaptureError::permissionDenied),
              "Screen Recording permission needed \u2014 System Settings \u2192 Privacy & "
              "Security."},
    ErrorCase{"NoCompositeOnX11", failure(CaptureError::permissionDenied),
              "Can't read windows off the screen \u2014 the X server needs the Composite "
              "extension.", x11},
    ErrorCase{"GsettingsOnX11", AppearanceController::Failure{Kind::automationDenied, {}},
              "Couldn't toggle Dark Mode \u2014 gsettings couldn't change the desktop's colour "
              "scheme; "
              "check the session's D-Bus, then retry.", x11},
    ErrorCase{"WindowNotFoundIsGeneric", failure(CaptureError::windowNotFound),
              "Capture failed: " + generic + "(Zephyrdock.CaptureError error 0.)"},
    ErrorCase{"NoDisplayIsGeneric", failure(CaptureError::noDisplay),
              "Capture failed: " + generic + "(Zephyrdock.CaptureError error 3.)"},
    ErrorCase{"SystemFailureKeepsItsText", CaptureFailure::system("The stream stopped."),
              "Capture failed: The stream stopped."},
    ErrorCase{"ScriptErrorIsGeneric", AppearanceController::Failure{Kind::scriptError, "boom"},
              "Capture failed: " + generic + "(Zephyrdock.AppearanceController.Failure error 0.)"},
    ErrorCase{"MissingBundleIDIsGeneric", LanguageRelauncher::Failure::missingBundleID(),
              "Capture failed: " + generic + "(Zephyrdock.LanguageRelauncher.Failure error 1.)"}),
    [](const auto& p) { return std::string(p.param.name); });
// clang-format on

// The summary after a multiple-windows run.
CaptureEngine::CaptureRecords threeSelected(std::vector<CaptureEngine::CaptureOutcome> outcomes,
                                            Strings missing = {}) {
    CaptureEngine::CaptureRecords records;
    records.lastEnabledSnapshot = {{1, "Pad \u2014 Doc"}, {2, "Mail"}, {3, "Term"}};
    records.lastCaptureOutcomes = std::move(outcomes);
    records.lastMissingFromLayout = std::move(missing);
    return records;
}

TEST(AllWindowsSummary, SilentWhenEverySelectedWindowMadeIt) {
    EXPECT_FALSE(makeAllWindowsSummary(threeSelected({{"Pad \u2014 Doc", {}, true, false},
                                                      {"Mail", {}, true, false},
                                                      {"Term", {}, true, false}})));
}

TEST(AllWindowsSummary, ListsEveryWindowWithItsFate) {
    auto summary =
        makeAllWindowsSummary(threeSelected({{"Mail", {-1440.5, 25.9, 800.7, 600.2}, false, true},
                                             {"Pad \u2014 Doc", {10, 20, 300, 200}, true, false}}));
    ASSERT_TRUE(summary);
    EXPECT_EQ(summary->headline, "2 windows didn't make it");
    EXPECT_EQ(summary->lines,
              (Strings{"1 of 3 selected windows in output.",
                       "Order below is the popover order \u2014 top = front-most in the composite.",
                       "", "\u2022 Pad \u2014 Doc  \u2014  captured  (10,20) 300\u00d7200",
                       "\u2022 Mail  \u2014  blank image  (-1440,25) 800\u00d7600",
                       "\u2022 Term  \u2014  dropped (unknown stage)", "",
                       "ScreenCaptureKit can refuse to share windows that live on another Mission "
                       "Control space, are minimised, or belong to apps that have opted out of "
                       "screen sharing. Move the window to the active desktop and re-Take."}));
}

TEST(AllWindowsSummary, OneDroppedIsSingularAndEqualLabelsTakeOneOutcomeEach) {
    CaptureEngine::CaptureRecords records;
    records.lastEnabledSnapshot = {{1, "Mail"}, {2, "Mail"}, {3, "Term"}};
    records.lastCaptureOutcomes = {{"Mail", {0, 0, 1, 1}, true, false},
                                   {"Term", {-0.5, 0, 1, 1}, false, false}};
    records.lastMissingFromLayout = {"Mail"};
    records.lastCaptureOutcomes.push_back({"Term", {}, true, false});
    auto summary = makeAllWindowsSummary(records);
    ASSERT_TRUE(summary);
    EXPECT_EQ(summary->headline, "1 window didn't make it");
    EXPECT_EQ(Strings(summary->lines.begin() + 3, summary->lines.begin() + 6),
              (Strings{"\u2022 Mail  \u2014  captured  (0,0) 1\u00d71",
                       "\u2022 Mail  \u2014  not in SCShareableContent",
                       "\u2022 Term  \u2014  capture error  (0,0) 1\u00d71"}));
}

TEST_F(RunFixture, SummaryAlertIsAWarningWithOneButton) {
    view->captureRecords = threeSelected({{"Mail", {}, true, false}});
    view->showAllWindowsCaptureSummary();
    ASSERT_EQ(dialogs.alerts.size(), 1u);
    EXPECT_EQ(dialogs.alerts[0].messageText, "2 windows didn't make it");
    EXPECT_EQ(dialogs.alerts[0].style, AlertStyle::warning);
    EXPECT_EQ(dialogs.alerts[0].buttons, Strings{"OK"});
    EXPECT_EQ(dialogs.alerts[0].informativeText.find("1 of 3 selected windows in output.\n"), 0u);
}

// Finding the target again.
CaptureTarget window(std::uint32_t id, std::string app, std::optional<std::string> bundle) {
    return {.id = id, .appName = std::move(app), .bundleId = std::move(bundle)};
}

struct RestoreCase {
    const char* name;
    std::optional<std::string> bundleID;
    std::optional<std::string> appName;
    std::optional<std::uint32_t> selectedBefore;
    std::optional<std::uint32_t> selectedAfter;
};

class RestoreSelection : public RunFixture, public ::testing::WithParamInterface<RestoreCase> {};

TEST_P(RestoreSelection, MatchesByBundleThenNameElseKeepsOnlyAListedWindow) {
    const RestoreCase& c = GetParam();
    services.targets = {window(10, "Mail", "com.mail"), window(11, "Notes", "com.other"),
                        window(12, "Notes", "com.example.notes")};
    view->selectedTargetID = c.selectedBefore;
    view->restoreSourceSelection(c.bundleID, c.appName);
    EXPECT_EQ(view->selectedTargetID, c.selectedAfter);
    EXPECT_EQ(view->targets.size(), 3u);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Cases, RestoreSelection, ::testing::Values(
    RestoreCase{"BundleWinsOverName", "com.example.notes", "Notes", 7, 12},
    RestoreCase{"NameWhenBundleIsGone", "com.gone", "Notes", 7, 11},
    RestoreCase{"NoKeysAndWindowGoneClears", std::nullopt, "", 7, std::nullopt},
    RestoreCase{"NoMatchKeepsAListedSelection", "com.gone", "Gone", 10, 10},
    RestoreCase{"NothingSelectedStaysSo", "com.gone", std::nullopt, std::nullopt, std::nullopt}),
    [](const auto& p) { return std::string(p.param.name); });
// clang-format on

TEST_F(RunFixture, RetryFindsTheRelaunchedApplicationWhenItShowsUp) {
    services.targetsAnswer = [&] {
        if (clock.now() < 1000ms)
            return std::vector<CaptureTarget>{};
        return std::vector<CaptureTarget>{window(300, "Notes", "com.example.notes")};
    };
    view->restoreSourceSelectionWithRetry(std::string("com.example.notes"), std::string("Notes"));
    EXPECT_TRUE(clock.runUntilIdle());
    EXPECT_EQ(view->selectedTargetID, 300u);
    EXPECT_EQ(only({"currentTargets"}).size(), 5u);  // at 0, 0.25, 0.5, 0.75 and 1 s
    EXPECT_EQ(clock.now(), 1000ms);
}

TEST_F(RunFixture, RetryGivesUpAfterFiveSecondsAndClearsAGoneSelection) {
    services.targets = {window(10, "Mail", "com.mail")};
    view->restoreSourceSelectionWithRetry(std::string("com.example.notes"), std::string("Notes"));
    EXPECT_TRUE(clock.runUntilIdle());
    EXPECT_EQ(view->selectedTargetID, std::nullopt);
    EXPECT_EQ(clock.now(), 5000ms);
    EXPECT_EQ(only({"currentTargets"}).size(), 21u);
}

}  // namespace
}  // namespace zd::testing
