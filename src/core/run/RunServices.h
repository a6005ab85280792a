#pragma once
// What a capture run needs from the other subsystems, one method per operation it calls:
// target discovery, running applications, the save folder setting, the language relauncher,
// the appearance controller, the window resizer, the capture engine, the menu bar reader and
// the run output. The application forwards each to its namespace; tests script the answers.
//
// Operations that the run awaits are tasks; those that hold the UI thread while their tool
// runs (the language read, the appearance calls) are plain calls, and the run itself decides
// where to move them off the UI thread.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "capture/CaptureError.h"
#include "capture/FullDisplayCapture.h"
#include "composition/MenuBarOCR.h"
#include "composition/OutputError.h"
#include "control/AppearanceController.h"
#include "control/LanguageRelauncher.h"
#include "model/AppearanceMode.h"
#include "model/CaptureTarget.h"
#include "model/CapturedShot.h"
#include "model/CompositeEntry.h"
#include "model/Expected.h"
#include "model/Geometry.h"
#include "model/Image.h"
#include "model/Value.h"
#include "model/WindowSizePreset.h"
#include "run/RunOutput.h"
#include "run/Task.h"

namespace zd {

class ContentView;

// What the platform knows of a running application.
struct RunningApplicationInfo {
    std::int32_t pid = 0;
    std::optional<std::string> bundleIdentifier;
    std::optional<Image> icon;
};

class RunServices {
  public:
    virtual ~RunServices() = default;

    // --- Target discovery and running applications
    // RunningApps.currentTargets(): the capturable windows, sorted.
    virtual std::vector<CaptureTarget> currentTargets() = 0;
    // The window server's list of windows, records with its own keys ("kCGWindowNumber", …).
    virtual std::vector<Value> windowList() = 0;
    // The running application with this process id, if there is one.
    virtual std::optional<RunningApplicationInfo> runningApplication(std::int32_t pid) = 0;
    // Brings that application to the front, ahead of all others.
    virtual void activateApplication(std::int32_t pid) = 0;

    // --- Settings: the folder that receives run folders ("saveFolderURL")
    virtual std::optional<std::string> saveFolderURL() = 0;
    virtual void setSaveFolderURL(const std::string& path) = 0;

    // --- LanguageRelauncher
    // Holds the calling thread until the tool has answered.
    virtual std::string currentLanguageCode(const std::string& bundleID) = 0;
    virtual Task<Expected<CaptureTarget, LanguageRelauncher::Failure>> relaunch(
        CaptureTarget target, std::string languageCode, double settleDelay, double timeout) = 0;
    virtual Task<void> revertToOriginalLanguage(std::string bundleID) = 0;

    // --- AppearanceController (block until the script tool has ended)
    virtual std::optional<AppearanceMode> currentAppearance() = 0;
    virtual Expected<void, AppearanceController::Failure> setAppearance(AppearanceMode mode) = 0;

    // --- WindowResizer and the Accessibility permission
    // With `prompt` the system also asks the user to grant it.
    virtual bool isAccessibilityTrusted(bool prompt) = 0;
    virtual void applyWindowSize(WindowSizePreset preset, std::int32_t pid) = 0;
    // The same with each side of the frame capped at `maximumPts` (Flathub's window limit).
    virtual void applyWindowSizeWithin(WindowSizePreset preset, std::int32_t pid,
                                       Size maximumPts) = 0;

    // --- CaptureEngine
    virtual Task<Expected<Image, CaptureFailure>> captureWindow(CaptureTarget target) = 0;
    // The layout of the given rows of the multiple-windows list; writes the snapshot and the
    // missing labels into `records`.
    virtual Task<Expected<CaptureEngine::FullDisplayLayout, CaptureFailure>>
    buildLayoutFromCompositeWindows(std::vector<CompositeEntry> rows,
                                    CaptureEngine::CaptureRecords& records) = 0;
    // Writes the outcome of every window into `records`.
    virtual Task<Expected<Image, CaptureFailure>> captureFullDisplay(
        std::optional<CaptureEngine::FullDisplayLayout> layout,
        CaptureEngine::CaptureRecords& records) = 0;

    // --- MenuBarOCR (a failure gives nothing, or no titles)
    virtual Task<std::optional<MenuBarOCR::MenuBarCapture>> captureMenuBarImage() = 0;
    virtual Task<std::vector<std::string>> ocr(Image menuBar, std::string appName) = 0;
    // The target's own menu titles through the accessibility interface (MenuTitles.fromMenuBars):
    // empty without a menu bar, none when unread.
    virtual Task<std::optional<std::vector<std::string>>> readMenuTitles(CaptureTarget target) = 0;

    // --- Run output
    // What composes a shot through the view's tiles and encodes it, fixed as the view stands
    // at the call; called on a worker for each shot while the run goes on.
    virtual ShotEncoder shotEncoder(const ContentView& view) = 0;
    // Writes the run's encoded shots (writeEncoded of the run output), with what the store
    // adds beside them.
    virtual Expected<void, OutputError> saveAll(const ContentView& view,
                                                const std::vector<EncodedShot>& shots,
                                                const std::string& runRoot,
                                                const std::string& stamp,
                                                const std::string& variantPrefix) = 0;
};

}  // namespace zd
