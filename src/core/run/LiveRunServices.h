#pragma once
// The run's services as the running program provides them: each operation forwards to its
// subsystem (RunningApps, LanguageRelauncher, AppearanceController, WindowResizer,
// CaptureEngine, MenuBarOCR and the run output) over the environment.

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

  private:
    Environment& env_;
};

}  // namespace zd
