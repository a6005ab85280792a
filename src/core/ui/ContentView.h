#pragma once
// The main window's state owner: every setting and every piece of run state as plain fields,
// the shot plan derived from them, and the capture run with its failure reporting. The Qt
// window observes it and the command line drives it; both run the very same run. All of it
// lives on the UI thread.

#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "capture/FullDisplayCapture.h"
#include "composition/Placeholders.h"
#include "composition/TileRenderer.h"
#include "env/Environment.h"
#include "model/AppearanceMode.h"
#include "model/BackgroundChoice.h"
#include "model/CaptureScope.h"
#include "model/CaptureTarget.h"
#include "model/CapturedShot.h"
#include "model/CompositeEntry.h"
#include "model/DestinationMode.h"
#include "model/Geometry.h"
#include "model/Image.h"
#include "model/LanguageSelection.h"
#include "model/MenuBarConfig.h"
#include "model/OutputSize.h"
#include "model/Preferences.h"
#include "model/SpacesInfo.h"
#include "model/WindowSizePreset.h"
#include "run/RunError.h"
#include "run/RunServices.h"
#include "run/Task.h"
#include "store/Store.h"
#include "ui/CaptureProgressModel.h"
#include "ui/PlanEntry.h"

namespace zd {

class ContentView {
  public:
    using PlanEntry = zd::PlanEntry;

    // Starts from the settings loaded from the store (an empty store's values by default).
    ContentView(Environment& env, RunServices& services,
                const Preferences::LoadedSettings& settings = {});
    ContentView(const ContentView&) = delete;
    ContentView& operator=(const ContentView&) = delete;

    // --- State, in the window's order
    std::vector<CaptureTarget> targets;
    std::optional<std::uint32_t> selectedTargetID;
    std::vector<Spaces::Info> availableSpaces;
    std::uint64_t selectedSpaceID = 0;             // 0: no filter
    std::vector<CompositeEntry> compositeWindows;  // top = front-most
    bool showingWindowsPopover = false;
    CaptureScope captureScope;
    WindowSizePreset sizePreset;
    std::set<AppearanceMode> enabledAppearances;
    int countdownSeconds;
    bool countdownAfterRelaunch;
    std::vector<LanguageSelection> languages;
    OutputSize outputSize;
    int customCanvasWidth;
    int customCanvasHeight;
    bool windowShadow;
    BackgroundChoice lightBackground;
    BackgroundChoice darkBackground;
    MenuBarConfig menuBar;
    DestinationMode destinationMode = DestinationMode::newDestination;
    std::string variantName;
    std::vector<std::string> detectedMenuTitles;
    std::optional<Image> capturedMenuBarImage;
    std::optional<std::string> lastRunRoot;  // absolute folder path
    bool pulseRevealButton = false;
    std::string targetCurrentLangCode;
    CaptureProgressModel progress;
    bool isWorking = false;
    std::optional<TaskHandle> captureTask;
    // The clean-up's detached language revert has not ended yet (a process that leaves waits).
    bool revertingLanguage = false;
    // What the last multiple-windows layout and capture found, for the run's summary.
    CaptureEngine::CaptureRecords captureRecords;
    // Where the status items of the last captured menu bar begin, as a fraction of its width.
    double statusItemsLeftFraction = 1.0;
    // The applications of this run whose Light and Dark captures showed the same window.
    std::vector<std::string> notFollowingDark;
    // The store the pictures are made for: the Mac App Store's canvas, or Flathub's export of
    // the window alone (the canvas section's choice).
    Store store = Store::macAppStore;
    // Where the Flathub export's screenshots.xml says its images will be published.
    std::string screenshotBaseURL;

    // --- The shot plan (computed on demand, changes nothing)
    std::vector<PlanEntry> planEntries() const;
    int plannedShotCount() const;
    bool captureDisabled() const;
    bool canRepeatAfterLanguage() const;
    Size canvasSize() const;
    // The canvas size is part of the call's shape only.
    Size placeholderWindowSize(Size canvas) const;
    // One line for the plan and the preview's header when the store would refuse what the
    // settings make (transparency, a size it doesn't take); none when it would take it.
    std::optional<std::string> storeWarning() const;
    // The canvas a saved shot is composed on: canvasSize(), or in the Flathub export the
    // shot's window with room for its shadow.
    Size pictureCanvas(const CapturedShot& shot) const;
    // Pixels per point of the captures (the main screen's), 2 without a screen.
    double captureScale() const;

    // --- Tiles: one planned output composed from the settings, over a real capture when given
    TileState tileState() const;
    // An empty image when the environment can't draw.
    Image renderTile(const PlanEntry& entry, const CapturedShot* real, Size canvas) const;
    Image renderFlathubTile(const PlanEntry& entry, const CapturedShot* real, Size canvas) const;

    // --- The live lists: filled at start, then on each activation and every second while idle
    void reloadSpaces();
    void reloadTargets();
    void reloadCompositeWindows();

    // The first of `targets` with the selected id.
    std::optional<CaptureTarget> selectedTarget() const;
    // The target a run starts from: the selected one, else in multiple windows that of the first
    // ticked row, looked up afresh. Its application names the run folder.
    std::optional<CaptureTarget> runTarget();

    // --- The run
    // The take button: starts runFullCapture as the run's task and keeps its handle.
    void takeShots();
    Task<void> runFullCapture();
    Task<void> raiseAndCountdown(std::optional<CaptureTarget> target, std::string prefix);
    Task<Expected<std::vector<CapturedShot>, RunError>> captureCurrentLanguage(
        std::optional<CaptureTarget> target, std::string code, std::string label);

    // --- Failures, stopping, summary, selection
    void handleCaptureError(const RunError& error);
    void cancelCapture();
    void showAllWindowsCaptureSummary();
    void restoreSourceSelection(const std::optional<std::string>& bundleID,
                                const std::optional<std::string>& appName);
    void restoreSourceSelectionWithRetry(const std::optional<std::string>& bundleID,
                                         const std::optional<std::string>& appName);

    // --- Output folder
    void chooseSaveFolder();
    void revealInFinder(const std::string& path);

  private:
    struct RunRestore {
        std::optional<std::string> restoreBundleID;
        std::optional<std::string> restoreAppName;
        std::optional<std::string> revertBundleID;
    };

    Environment& env_;
    RunServices& services_;
    std::uint64_t cleanUps_ = 0;  // lets takeShots tell a run that already ended
    mutable std::unique_ptr<Placeholders> placeholders_;  // made on first use

    Clock& clock() const { return *env_.clock; }
    std::optional<CaptureTarget> allWindowsFallbackTarget();
    Task<void> readMenuBar(const CaptureTarget& target);
    Task<Expected<Image, CaptureFailure>> captureOne(
        CaptureScope scope, const std::optional<CaptureTarget>& target,
        const std::optional<CaptureEngine::FullDisplayLayout>& layout);
    Task<Expected<std::vector<CapturedShot>, RunError>> captureBothAppearances(
        CaptureScope scope, std::optional<CaptureTarget> target,
        std::optional<CaptureEngine::FullDisplayLayout> layout, std::string code,
        std::string label);
    Task<Expected<std::vector<CapturedShot>, RunError>> captureOneAppearance(
        AppearanceMode mode, CaptureScope scope, std::optional<CaptureTarget> target,
        std::optional<CaptureEngine::FullDisplayLayout> layout, std::string code,
        std::string label);
    void noteIfNotFollowing(CaptureScope scope, const std::optional<CaptureTarget>& target,
                            const std::vector<CapturedShot>& shots);
    bool saveCollected(const std::vector<CapturedShot>& collected, std::string& runRoot);
    void failWalk(const RunError& error, int collected);
    void cleanUp(const RunRestore& restore);
    Task<void> revertAndRestore(std::string bundleID, RunRestore restore);
    void restoreAttempt(std::optional<std::string> bundleID, std::optional<std::string> appName,
                        Nanos deadline);
};

}  // namespace zd
