#pragma once
// The main window's state owner: every setting and every piece of run state as plain fields,
// the shot plan derived from them, the actions of the window's controls, and the capture run
// with its failure reporting. The Qt window observes it and the command line drives it; both
// run the very same run. All of it lives on the UI thread.
//
// A face reads the fields and changes them through the actions below, which announce the
// change (see ChangeNotices) and write what the control persists; the run announces its own
// writes. A field written directly is not announced: that is for the command line's overrides
// before a run, and for tests.

#include <cstdint>
#include <functional>
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
#include "run/RunOutput.h"
#include "run/RunServices.h"
#include "run/Task.h"
#include "store/Store.h"
#include "ui/CaptureProgressModel.h"
#include "ui/ChangeNotices.h"
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
    ~ContentView();

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

    // --- Change notices. Each group is announced after the write, once per action; a reload
    // announces `lists` only when a list really changed. Writes to `progress` come as
    // `progress`.
    ChangeNotices notices;
    [[nodiscard]] Subscription subscribe(ViewChange group, std::function<void()> onChange) {
        return notices.subscribe(group, std::move(onChange));
    }

    // --- Actions of the controls. Each changes the state and announces its group (settings,
    // unless told); those that persist write their keys through Preferences, and no others.
    // A scope tile: writes "captureScope" only; the selection and all else stay.
    void setCaptureScope(CaptureScope scope);
    // A size preset tile: writes "windowSizePreset".
    void setSizePreset(WindowSizePreset preset);
    // An appearance tile: adds or removes the mode, but the last enabled one stays; writes
    // "captureLight" and "captureDark" in every case.
    void toggleAppearance(AppearanceMode mode);
    // The language menu and the chips. Both run after the event that caused them (posted to
    // the UI thread). Adding skips a code already listed and appends; removing drops every
    // entry with the code. Each writes the whole list to "languageCodes", empty included.
    void addLanguage(LanguageSelection selection);
    void removeLanguage(LanguageSelection selection);
    // The canvas picker: writes "outputSize".
    void setOutputSize(OutputSize size);
    // The custom size fields: typing changes the state only, the field's commit writes
    // "customCanvasWidth" / "customCanvasHeight". Nothing is clamped here.
    void setCustomCanvasWidth(int width);
    void setCustomCanvasHeight(int height);
    void commitCustomCanvasWidth();
    void commitCustomCanvasHeight();
    // The "Window shadow" toggle: writes "windowShadow".
    void setWindowShadow(bool on);
    // A background block's kind tiles: writes "lightBackgroundKind" / "darkBackgroundKind".
    void setBackgroundKind(AppearanceMode mode, BackgroundKind kind);
    // A background block's picture, chosen, dropped or cleared (nothing): writes or removes
    // "lightBackgroundURL" / "darkBackgroundURL". The kind stays as it is.
    void setBackgroundURL(AppearanceMode mode, std::optional<std::string> path);
    // The colour well: not stored, every start gives the default colours.
    void setBackgroundFillColor(AppearanceMode mode, Color color);
    // The "Choose image…" button: asks the picture chooser; cancelling changes nothing.
    void chooseBackgroundImage(AppearanceMode mode);
    // A drop on a background block, as URL texts in the drop's order: false for an empty
    // drop, else true; the first entry, if it is a local file, becomes the picture.
    bool handleDrop(AppearanceMode mode, const std::vector<std::string>& urls);
    // The countdown menu: write "countdownSeconds" / "countdownAfterRelaunch".
    void setCountdownSeconds(int seconds);
    void setCountdownAfterRelaunch(bool on);
    // The menu bar section's controls: not stored.
    void setMenuBar(MenuBarConfig config);
    // The actions bar's variant field (settings) and destination menu (lastRun): not stored.
    void setVariantName(std::string name);
    void setDestinationMode(DestinationMode mode);
    void setShowingWindowsPopover(bool showing);
    // The source picker (selection): restarts refreshTargetLanguage when the id changes.
    void setSelectedTargetID(std::optional<std::uint32_t> id);
    // The Space picker (selection): reloads the three lists.
    void setSelectedSpaceID(std::uint64_t id);
    // A row's tick and the drag of a row in the windows popover (lists).
    void setCompositeWindowEnabled(std::uint32_t id, bool enabled);
    void moveCompositeWindow(std::size_t from, std::size_t to);

    // --- Keeping the window current
    // The window came on screen: the three lists, the cancel callback of the progress model,
    // and the target's language.
    void onAppear();
    // The application became active or the window became key: the three lists, unless a run
    // is going on.
    void onActivated();
    // One tick of the idle refresh: targets and composite windows, only while the application
    // is active and no run is going on.
    void idleTick(bool applicationIsActive);
    // Ticks every second on the clock until stopped (or the view ends), asking each time
    // whether the application is active.
    void startIdleTimer(std::function<bool()> applicationIsActive);
    void stopIdleTimer();
    // Reads the selected target's current language on a worker into targetCurrentLangCode
    // (selection): "" at once without a target or application identity; an answer that
    // arrives after the selection changed again is dropped.
    void refreshTargetLanguage();

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
    // How a saved shot is composed, fixed as the view stands now (the settings are locked while
    // a run goes on): it holds all it reads, so a worker may call it while the view goes on.
    ShotComposer savedShotComposer() const;

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
    // Each shot is also given to `taken` the moment it is captured, before the others of the
    // language are.
    using ShotTaken = std::function<void(const CapturedShot&)>;
    Task<Expected<std::vector<CapturedShot>, RunError>> captureCurrentLanguage(
        std::optional<CaptureTarget> target, std::string code, std::string label,
        ShotTaken taken = {});
    // A clean-up's detached revert of the target's language hasn't ended yet: a face that
    // quits waits for it, so the target isn't left closed between its end and its restart.
    bool revertInProgress() const { return revertsRunning_ > 0; }

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
    int revertsRunning_ = 0;
    mutable std::unique_ptr<Placeholders> placeholders_;  // made on first use

    std::shared_ptr<int> alive_ = std::make_shared<int>(0);  // expires with the view
    Subscription progressForward_;
    std::optional<Clock::TimerId> idleTimer_;
    std::function<bool()> applicationIsActive_;
    std::uint64_t languageReads_ = 0;  // the latest read of the target's language

    Clock& clock() const { return *env_.clock; }
    // `fn`, made to do nothing once the view has gone (for timers, posts and workers).
    template <class F>
    std::function<void()> guarded(F fn) {
        return [alive = std::weak_ptr<int>(alive_), fn = std::move(fn)]() mutable {
            if (!alive.expired())
                fn();
        };
    }
    void setPulseRevealButton(bool on);
    void scheduleIdleTick();
    void setTargetCurrentLangCode(std::string code);
    void persist(const std::function<void(SettingsStore&)>& write);
    // Announces what a reload or a restore changed, given the state before it.
    void announceListsAndSelection(const std::vector<CaptureTarget>& targetsBefore,
                                   const std::vector<CompositeEntry>& rowsBefore,
                                   const std::vector<Spaces::Info>& spacesBefore,
                                   std::optional<std::uint32_t> selectedBefore,
                                   std::uint64_t spaceBefore);
    std::optional<CaptureTarget> allWindowsFallbackTarget();
    Task<void> readMenuBar(const CaptureTarget& target);
    Task<Expected<Image, CaptureFailure>> captureOne(
        CaptureScope scope, const std::optional<CaptureTarget>& target,
        const std::optional<CaptureEngine::FullDisplayLayout>& layout);
    Task<Expected<std::vector<CapturedShot>, RunError>> captureBothAppearances(
        CaptureScope scope, std::optional<CaptureTarget> target,
        std::optional<CaptureEngine::FullDisplayLayout> layout, std::string code, std::string label,
        ShotTaken taken);
    Task<Expected<std::vector<CapturedShot>, RunError>> captureOneAppearance(
        AppearanceMode mode, CaptureScope scope, std::optional<CaptureTarget> target,
        std::optional<CaptureEngine::FullDisplayLayout> layout, std::string code, std::string label,
        ShotTaken taken);
    void noteIfNotFollowing(CaptureScope scope, const std::optional<CaptureTarget>& target,
                            const std::vector<CapturedShot>& shots);
    bool saveCollected(const std::vector<EncodedShot>& collected, std::string& runRoot);
    void failWalk(const RunError& error, int collected);
    void cleanUp(const RunRestore& restore);
    Task<void> revertAndRestore(std::string bundleID, RunRestore restore);
    void restoreAttempt(std::optional<std::string> bundleID, std::optional<std::string> appName,
                        Nanos deadline);
};

}  // namespace zd
