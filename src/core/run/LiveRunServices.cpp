#include "run/LiveRunServices.h"

#include "capture/CaptureEngine.h"
#include "capture/RunningApps.h"
#include "capture/WindowResizer.h"
#include "composition/Compositor.h"
#include "composition/MenuBarOCR.h"
#include "composition/TileRenderer.h"
#include "env/AppearanceBackend.h"
#include "env/ProcessBackend.h"
#include "env/ScreenBackend.h"
#include "env/WindowListBackend.h"
#include "env/WindowSizingBackend.h"
#include "model/Preferences.h"
#include "run/RunOutput.h"
#include "ui/ContentView.h"

namespace zd {

namespace {
constexpr std::string_view saveFolderKey = "saveFolderURL";
}  // namespace

LiveRunServices::LiveRunServices(Environment& env) : env_(env), placeholders_(*env.canvases) {}

std::vector<CaptureTarget> LiveRunServices::currentTargets() {
    return RunningApps::currentTargets(env_);
}

std::vector<Value> LiveRunServices::windowList() {
    const Value list = env_.windowList->windowList(WindowListOption::allWindows);
    if (const auto* records = list.asArray())
        return *records;
    return {};
}

std::optional<RunningApplicationInfo> LiveRunServices::runningApplication(std::int32_t pid) {
    auto app = env_.processes->runningApplication(pid);
    if (!app)
        return std::nullopt;
    return RunningApplicationInfo{app->pid, app->bundleIdentifier, app->icon};
}

void LiveRunServices::activateApplication(std::int32_t pid) {
    env_.processes->activate(pid);
}

std::optional<std::string> LiveRunServices::saveFolderURL() {
    return Preferences::url(*env_.settings, saveFolderKey);
}

void LiveRunServices::setSaveFolderURL(const std::string& path) {
    Preferences::setURL(*env_.settings, path, saveFolderKey);
}

std::string LiveRunServices::currentLanguageCode(const std::string& bundleID) {
    return LanguageRelauncher::currentLanguageCode(*env_.languageOverride, bundleID);
}

Task<Expected<CaptureTarget, LanguageRelauncher::Failure>> LiveRunServices::relaunch(
    CaptureTarget target, std::string languageCode, double settleDelay, double timeout) {
    return LanguageRelauncher::relaunch(env_, std::move(target), std::move(languageCode),
                                        settleDelay, timeout);
}

Task<void> LiveRunServices::revertToOriginalLanguage(std::string bundleID) {
    return LanguageRelauncher::revertToOriginalLanguage(env_, std::move(bundleID));
}

std::optional<AppearanceMode> LiveRunServices::currentAppearance() {
    auto mode = AppearanceController::current(*env_.appearance);
    if (!mode)
        return std::nullopt;
    return *mode == AppearanceController::Mode::dark ? AppearanceMode::dark : AppearanceMode::light;
}

Expected<void, AppearanceController::Failure> LiveRunServices::setAppearance(AppearanceMode mode) {
    return AppearanceController::set(*env_.appearance, AppearanceController::modeOf(mode));
}

bool LiveRunServices::isAccessibilityTrusted(bool prompt) {
    return env_.sizing->isProcessTrusted(prompt);
}

void LiveRunServices::applyWindowSize(WindowSizePreset preset, std::int32_t pid) {
    WindowResizer::apply(env_, preset, pid);
}

Task<Expected<Image, CaptureFailure>> LiveRunServices::captureWindow(CaptureTarget target) {
    return CaptureEngine::captureWindow(env_, std::move(target));
}

Task<Expected<CaptureEngine::FullDisplayLayout, CaptureFailure>>
LiveRunServices::buildLayoutFromCompositeWindows(std::vector<CompositeEntry> rows,
                                                 CaptureEngine::CaptureRecords& records) {
    return CaptureEngine::buildLayoutFromCompositeWindows(env_, std::move(rows), records);
}

Task<Expected<Image, CaptureFailure>> LiveRunServices::captureFullDisplay(
    std::optional<CaptureEngine::FullDisplayLayout> layout,
    CaptureEngine::CaptureRecords& records) {
    return CaptureEngine::captureFullDisplay(env_, std::move(layout), records);
}

Task<std::optional<Image>> LiveRunServices::captureMenuBarImage() {
    auto capture = co_await MenuBarOCR::captureMenuBarImage(env_);
    if (!capture)
        co_return std::nullopt;
    lastStatusItemsLeftFraction_ = capture->statusItemsLeftFraction;
    co_return std::move(capture->image);
}

Task<std::vector<std::string>> LiveRunServices::ocr(Image menuBar, std::string appName) {
    return MenuBarOCR::ocr(env_, std::move(menuBar), std::move(appName));
}

Image LiveRunServices::renderTile(const ContentView& view, AppearanceMode mode,
                                  const CapturedShot* real, Size canvas) {
    TileState state;
    state.captureScope = view.captureScope;
    state.placeholderWindowSize = view.placeholderWindowSize(canvas);
    state.menuBar = view.menuBar;
    state.detectedMenuTitles = view.detectedMenuTitles;
    state.lightBackground = view.lightBackground;
    state.darkBackground = view.darkBackground;
    state.windowShadow = view.windowShadow;
    state.capturedMenuBarImage = view.capturedMenuBarImage;
    state.statusItemsLeftFraction = lastStatusItemsLeftFraction_;
    const Compositor::Platform platform{*env_.canvases, *env_.images, env_.screens->mainScreen(),
                                        Compositor::realMenuBarHeightPts(*env_.windowList)};
    return zd::renderTile(mode, real, canvas, state, placeholders_, platform);
}

Expected<void, OutputError> LiveRunServices::saveAll(const ContentView& view,
                                                     const std::vector<CapturedShot>& shots,
                                                     const std::string& runRoot,
                                                     const std::string& stamp,
                                                     const std::string& variantPrefix) {
    const Size canvas = view.canvasSize();
    const ShotComposer compose = [this, &view, canvas](const CapturedShot& shot) {
        return renderTile(view, shot.mode, &shot, canvas);
    };
    return zd::saveAll(shots, runRoot, stamp, variantPrefix, compose, *env_.images);
}

}  // namespace zd
