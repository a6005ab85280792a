#pragma once
// The run's services as the running program provides them: each operation forwards to its
// subsystem (RunningApps, LanguageRelauncher, AppearanceController, WindowResizer,
// CaptureEngine, MenuBarOCR, the run output and the compositor) over the environment. It also
// keeps what the menu bar reading learns about the status items, which composing reads.

#include "composition/Placeholders.h"
#include "env/Environment.h"
#include "run/RunServices.h"

namespace zd {

class LiveRunServices : public RunServices {
  public:
    explicit LiveRunServices(Environment& env);

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

    Task<Expected<Image, CaptureFailure>> captureWindow(CaptureTarget target) override;
    Task<Expected<CaptureEngine::FullDisplayLayout, CaptureFailure>>
    buildLayoutFromCompositeWindows(std::vector<CompositeEntry> rows,
                                    CaptureEngine::CaptureRecords& records) override;
    Task<Expected<Image, CaptureFailure>> captureFullDisplay(
        std::optional<CaptureEngine::FullDisplayLayout> layout,
        CaptureEngine::CaptureRecords& records) override;

    Task<std::optional<Image>> captureMenuBarImage() override;
    Task<std::vector<std::string>> ocr(Image menuBar, std::string appName) override;

    Expected<void, OutputError> saveAll(const ContentView& view,
                                        const std::vector<CapturedShot>& shots,
                                        const std::string& runRoot, const std::string& stamp,
                                        const std::string& variantPrefix) override;

    // One picture of the plan, as the preview pane and the saving compose it: `real` is the
    // captured shot, or nothing for a placeholder.
    Image renderTile(const ContentView& view, AppearanceMode mode, const CapturedShot* real,
                     Size canvas);

    // Where the live menu bar's status items began, as a fraction of its width (1 when the
    // last reading found none).
    double lastStatusItemsLeftFraction() const { return lastStatusItemsLeftFraction_; }

  private:
    Environment& env_;
    Placeholders placeholders_;
    double lastStatusItemsLeftFraction_ = 1.0;
};

}  // namespace zd
