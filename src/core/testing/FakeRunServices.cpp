#include "testing/FakeRunServices.h"

#include <cstdio>

#include "model/EnumTraits.h"

namespace zd::testing {

namespace {
std::string number(double value) {
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%g", value);
    return buffer;
}
}  // namespace

void FakeRunServices::note(std::string entry) {
    log_.add(entry);
    if (onCall)
        onCall(entry);
}

std::vector<CaptureTarget> FakeRunServices::currentTargets() {
    note("currentTargets");
    return targetsAnswer ? targetsAnswer() : targets;
}

std::vector<Value> FakeRunServices::windowList() {
    note("windowList");
    return windowRecords;
}

std::optional<RunningApplicationInfo> FakeRunServices::runningApplication(std::int32_t pid) {
    note("runningApplication " + std::to_string(pid));
    if (runningPids.count(pid) == 0)
        return std::nullopt;
    RunningApplicationInfo info;
    info.pid = pid;
    if (auto it = bundleOfPid.find(pid); it != bundleOfPid.end())
        info.bundleIdentifier = it->second;
    return info;
}

void FakeRunServices::activateApplication(std::int32_t pid) {
    note("activate " + std::to_string(pid));
}

std::optional<std::string> FakeRunServices::saveFolderURL() {
    note("saveFolderURL");
    return saveFolder;
}

void FakeRunServices::setSaveFolderURL(const std::string& path) {
    note("setSaveFolderURL " + path);
    saveFolder = path;
}

std::string FakeRunServices::currentLanguageCode(const std::string& bundleID) {
    note("currentLanguageCode " + bundleID);
    return languageCode;
}

Task<Expected<CaptureTarget, LanguageRelauncher::Failure>> FakeRunServices::relaunch(
    CaptureTarget target, std::string code, double settleDelay, double timeout) {
    const int call = relaunchCount++;
    note("relaunch " + std::to_string(target.id) + " " + code + " " + number(settleDelay) + " " +
         number(timeout));
    if (auto it = relaunchFailures.find(call); it != relaunchFailures.end()) {
        co_return unexpected(it->second);
    }
    CaptureTarget next = target;
    next.id = 101 + static_cast<std::uint32_t>(call);
    next.pid = 43 + call;
    runningPids.insert(next.pid);
    co_return next;
}

Task<void> FakeRunServices::revertToOriginalLanguage(std::string bundleID) {
    note("revertToOriginalLanguage " + bundleID);
    co_return;
}

std::optional<AppearanceMode> FakeRunServices::currentAppearance() {
    note("currentAppearance");
    return systemAppearance;
}

Expected<void, AppearanceController::Failure> FakeRunServices::setAppearance(AppearanceMode mode) {
    note("setAppearance " + rawString(mode));
    if (failingSets.count(mode) > 0) {
        return unexpected(AppearanceController::Failure{
            AppearanceController::Failure::Kind::automationDenied, {}});
    }
    systemAppearance = mode;
    return {};
}

bool FakeRunServices::isAccessibilityTrusted(bool prompt) {
    note(std::string("accessibility prompt=") + (prompt ? "true" : "false"));
    return accessibilityTrusted;
}

void FakeRunServices::applyWindowSize(WindowSizePreset preset, std::int32_t pid) {
    note("applyWindowSize " + rawString(preset) + " " + std::to_string(pid));
}

void FakeRunServices::applyWindowSizeWithin(WindowSizePreset preset, std::int32_t pid,
                                            Size maximumPts) {
    note("applyWindowSize " + rawString(preset) + " " + std::to_string(pid) + " within " +
         std::to_string(static_cast<int>(maximumPts.width)) + "x" +
         std::to_string(static_cast<int>(maximumPts.height)));
}

Task<Expected<Image, CaptureFailure>> FakeRunServices::captureWindow(CaptureTarget target) {
    const int call = captureCount++;
    note("captureWindow " + std::to_string(target.id) + " in " +
         (systemAppearance ? rawString(*systemAppearance) : std::string("?")));
    if (auto it = captureFailures.find(call); it != captureFailures.end()) {
        co_return unexpected(it->second);
    }
    // The window follows the system's appearance unless told otherwise.
    Image image(4, 2);
    const bool dark = targetFollowsAppearance && systemAppearance == AppearanceMode::dark;
    for (auto& pixel : image.mutablePixels())
        pixel = dark ? 0xff202020u : 0xfff0f0f0u;
    co_return image;
}

Task<Expected<CaptureEngine::FullDisplayLayout, CaptureFailure>>
FakeRunServices::buildLayoutFromCompositeWindows(std::vector<CompositeEntry> rows,
                                                 CaptureEngine::CaptureRecords& out) {
    int enabled = 0;
    for (const auto& row : rows)
        enabled += row.enabled ? 1 : 0;
    note("buildLayout " + std::to_string(enabled) + " enabled");
    if (layoutFailure)
        co_return unexpected(*layoutFailure);
    out.lastEnabledSnapshot = records.lastEnabledSnapshot;
    out.lastMissingFromLayout = records.lastMissingFromLayout;
    co_return CaptureEngine::FullDisplayLayout{};
}

Task<Expected<Image, CaptureFailure>> FakeRunServices::captureFullDisplay(
    std::optional<CaptureEngine::FullDisplayLayout> layout, CaptureEngine::CaptureRecords& out) {
    const int call = captureCount++;
    note(std::string(layout ? "captureFullDisplay" : "captureFullDisplay without layout") + " in " +
         (systemAppearance ? rawString(*systemAppearance) : std::string("?")));
    if (auto it = captureFailures.find(call); it != captureFailures.end()) {
        co_return unexpected(it->second);
    }
    out.lastCaptureOutcomes = records.lastCaptureOutcomes;
    co_return Image(8, 4);
}

Task<std::optional<MenuBarOCR::MenuBarCapture>> FakeRunServices::captureMenuBarImage() {
    note("captureMenuBarImage");
    if (!menuBarImage)
        co_return std::nullopt;
    co_return MenuBarOCR::MenuBarCapture{*menuBarImage, statusItemsLeftFraction};
}

Task<std::vector<std::string>> FakeRunServices::ocr(Image, std::string appName) {
    note("ocr " + appName);
    co_return menuTitles;
}

Task<std::optional<std::vector<std::string>>> FakeRunServices::readMenuTitles(
    CaptureTarget target) {
    note("readMenuTitles " + std::to_string(target.pid));
    const auto it = accessibleMenuTitles.find(target.pid);
    if (it == accessibleMenuTitles.end())
        co_return std::nullopt;
    co_return it->second;
}

ShotEncoder FakeRunServices::shotEncoder(const ContentView&) {
    return [this](CapturedShot shot) {
        const int call = encodeCount++;
        EncodedShot encoded{std::move(shot), std::nullopt, 4, 2};
        encoded.shot.image = Image();
        if (!encodeFailures.contains(call))
            encoded.png = std::vector<std::uint8_t>{'P', 'N', 'G'};
        return encoded;
    };
}

Expected<void, OutputError> FakeRunServices::saveAll(const ContentView&,
                                                     const std::vector<EncodedShot>& shots,
                                                     const std::string& runRoot, const std::string&,
                                                     const std::string& variantPrefix) {
    note("saveAll " + std::to_string(shots.size()) + " to " + runRoot + " prefix '" +
         variantPrefix + "'");
    if (saveFailure)
        return unexpected(*saveFailure);
    savedShots.clear();
    for (const EncodedShot& encoded : shots)
        savedShots.push_back(encoded.shot);
    savedRoot = runRoot;
    savedVariantPrefix = variantPrefix;
    return {};
}

}  // namespace zd::testing
