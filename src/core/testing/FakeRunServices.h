#pragma once
// The other subsystems as a run sees them, scripted: each call answers from the fields below
// and is written to the shared log, so a test asserts the exact order of a run's calls.
// Relaunches hand out new windows (ids from 101, pids from 43) of the same application.

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "run/RunServices.h"
#include "testing/EventLog.h"

namespace zd::testing {

class FakeRunServices : public RunServices {
  public:
    explicit FakeRunServices(EventLog& log) : log_(log) {}

    std::vector<CaptureTarget> currentTargets() override;
    std::vector<Value> windowList() override;
    std::optional<RunningApplicationInfo> runningApplication(std::int32_t pid) override;
    void activateApplication(std::int32_t pid) override;
    std::optional<std::string> saveFolderURL() override;
    void setSaveFolderURL(const std::string& path) override;
    std::string currentLanguageCode(const std::string& bundleID) override;
    Task<Expected<CaptureTarget, LanguageRelauncher::Failure>> relaunch(CaptureTarget target,
                                                                        std::string languageCode,
                                                                        double settleDelay,
                                                                        double timeout) override;
    Task<void> revertToOriginalLanguage(std::string bundleID) override;
    std::optional<AppearanceMode> currentAppearance() override;
    Expected<void, AppearanceController::Failure> setAppearance(AppearanceMode mode) override;
    bool isAccessibilityTrusted(bool prompt) override;
    void applyWindowSize(WindowSizePreset preset, std::int32_t pid) override;
    void applyWindowSizeWithin(WindowSizePreset preset, std::int32_t pid, Size maximumPts) override;
    Task<Expected<Image, CaptureFailure>> captureWindow(CaptureTarget target) override;
    Task<Expected<CaptureEngine::FullDisplayLayout, CaptureFailure>>
    buildLayoutFromCompositeWindows(std::vector<CompositeEntry> rows,
                                    CaptureEngine::CaptureRecords& records) override;
    Task<Expected<Image, CaptureFailure>> captureFullDisplay(
        std::optional<CaptureEngine::FullDisplayLayout> layout,
        CaptureEngine::CaptureRecords& records) override;
    Task<std::optional<MenuBarOCR::MenuBarCapture>> captureMenuBarImage() override;
    Task<std::vector<std::string>> ocr(Image menuBar, std::string appName) override;
    Task<std::optional<std::vector<std::string>>> readMenuTitles(CaptureTarget target) override;
    ShotEncoder shotEncoder(const ContentView& view) override;
    Expected<void, OutputError> saveAll(const ContentView& view,
                                        const std::vector<EncodedShot>& shots,
                                        const std::string& runRoot, const std::string& stamp,
                                        const std::string& variantPrefix) override;

    // --- Script
    // currentTargets answers `targets`, or what `targetsAnswer` gives when it is set.
    std::vector<CaptureTarget> targets;
    std::function<std::vector<CaptureTarget>()> targetsAnswer;
    std::vector<Value> windowRecords;
    std::set<std::int32_t> runningPids;  // pids with a running application
    std::map<std::int32_t, std::string> bundleOfPid;
    std::optional<std::string> saveFolder;
    std::string languageCode = "en";
    // Failures of relaunches, by call (0 = first); the others succeed.
    std::map<int, LanguageRelauncher::Failure> relaunchFailures;
    std::optional<AppearanceMode> systemAppearance = AppearanceMode::light;
    std::set<AppearanceMode> failingSets;  // set(mode) fails with automationDenied
    bool accessibilityTrusted = true;
    // Whether captured windows turn dark with the system.
    bool targetFollowsAppearance = true;
    // Failures of window and full-display captures, by call (0 = first).
    std::map<int, CaptureFailure> captureFailures;
    std::optional<CaptureFailure> layoutFailure;
    // Copied into the caller's records: the snapshot and missing labels by the layout, the
    // outcomes by the capture.
    CaptureEngine::CaptureRecords records;
    std::optional<Image> menuBarImage;
    double statusItemsLeftFraction = 0.8;  // given with every menu bar picture
    std::vector<std::string> menuTitles;
    // What the accessibility interface reads of each process's menus; none for others.
    std::map<std::int32_t, std::vector<std::string>> accessibleMenuTitles;
    std::optional<OutputError> saveFailure;
    // Shots whose encoding fails, by the order they are encoded in (0 = first).
    std::set<int> encodeFailures;
    // Called after every logged call with its entry: lets a test act at an exact point.
    std::function<void(const std::string&)> onCall;

    // --- Record
    std::vector<CapturedShot> savedShots;
    std::string savedRoot;
    std::string savedVariantPrefix;
    int relaunchCount = 0;
    int captureCount = 0;
    int encodeCount = 0;  // shots composed and encoded so far (not logged: workers' timing)

  private:
    EventLog& log_;
    void note(std::string entry);
};

}  // namespace zd::testing
