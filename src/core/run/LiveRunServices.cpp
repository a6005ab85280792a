#include "run/LiveRunServices.h"

#include "capture/CaptureEngine.h"
#include "capture/RunningApps.h"
#include "capture/WindowResizer.h"
#include "composition/Compositor.h"
#include "composition/MenuBarOCR.h"
#include "composition/MenuTitles.h"
#include "env/AccessibleMenuBackend.h"
#include "env/AppearanceBackend.h"
#include "env/ProcessBackend.h"
#include "env/WindowListBackend.h"
#include "env/WindowSizingBackend.h"
#include "model/Preferences.h"
#include "run/RunOutput.h"
#include "store/AppStreamScreenshots.h"
#include "ui/ContentView.h"

namespace zd {

namespace {
constexpr std::string_view saveFolderKey = "saveFolderURL";
}  // namespace

LiveRunServices::LiveRunServices(Environment& env) : env_(env) {}

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
    Preferences::setSaveFolderURL(*env_.settings, path);
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

void LiveRunServices::applyWindowSizeWithin(WindowSizePreset preset, std::int32_t pid,
                                            Size maximumPts) {
    WindowResizer::apply(env_, preset, pid, maximumPts);
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

Task<std::optional<MenuBarOCR::MenuBarCapture>> LiveRunServices::captureMenuBarImage() {
    return MenuBarOCR::captureMenuBarImage(env_);
}

Task<std::vector<std::string>> LiveRunServices::ocr(Image menuBar, std::string appName) {
    return MenuBarOCR::ocr(env_, std::move(menuBar), std::move(appName));
}

Task<std::optional<std::vector<std::string>>> LiveRunServices::readMenuTitles(
    CaptureTarget target) {
    if (!env_.menus)
        co_return std::nullopt;
    AccessibleMenuBackend& menus = *env_.menus;
    const std::int32_t pid = target.pid;
    auto bars = co_await onWorker(*env_.workers, [&menus, pid] { return menus.menuBars(pid); });
    co_return MenuTitles::fromMenuBars(bars);
}

ShotEncoder LiveRunServices::shotEncoder(const ContentView& view) {
    return [compose = view.savedShotComposer(), codec = env_.images](CapturedShot shot) {
        return encodeShot(std::move(shot), compose, *codec);
    };
}

Expected<void, OutputError> LiveRunServices::saveAll(const ContentView& view,
                                                     const std::vector<EncodedShot>& shots,
                                                     const std::string& runRoot,
                                                     const std::string& /*stamp*/,
                                                     const std::string& variantPrefix) {
    if (view.store != Store::flathub)
        return writeEncoded(shots, runRoot, variantPrefix);

    // Flathub: each picture is as large as its window, and screenshots.xml lists them all.
    std::vector<std::filesystem::path> written;
    auto saved = writeEncoded(shots, runRoot, variantPrefix, &written);
    if (!saved)
        return saved;
    std::vector<AppStreamScreenshots::Picture> pictures;
    for (std::size_t i = 0; i < written.size() && i < shots.size(); ++i) {
        pictures.push_back({written[i].lexically_relative(runRoot).generic_string(),
                            shots[i].shot.languageCode, written[i].stem().string(), shots[i].width,
                            shots[i].height});
    }
    const std::string snippet = AppStreamScreenshots::xml(
        pictures, view.screenshotBaseURL.empty() ? AppStreamScreenshots::kPlaceholderBaseURL
                                                 : view.screenshotBaseURL);
    auto path = uniquePath(runRoot, "screenshots", "xml");
    if (!path)
        return unexpected(path.error());
    return Compositor::writeEncodedPNG({snippet.begin(), snippet.end()}, *path);
}

}  // namespace zd
