#include "ui/ContentView.h"
#include "capture/TargetLists.h"

#include <algorithm>
#include <array>
#include <utility>

#include "control/LanguageRelauncher.h"
#include "env/DialogBackend.h"
#include "env/ScreenBackend.h"
#include "run/AllWindowsSummary.h"
#include "run/RunTexts.h"
#include "run/SourceSelection.h"
#include "store/FlathubExport.h"

namespace zd {

namespace {

// Stands in when the environment has no screen backend at all: no main screen.
class NoScreens : public ScreenBackend {
  public:
    std::optional<ScreenInfo> mainScreen() const override { return std::nullopt; }
};

const ScreenBackend& screensOf(const Environment& env) {
    static const NoScreens none;
    if (env.screens)
        return *env.screens;
    return none;
}

constexpr std::array<AppearanceMode, 2> kAppearanceOrder{AppearanceMode::light,
                                                         AppearanceMode::dark};

}  // namespace

ContentView::ContentView(Environment& env, RunServices& services,
                         const Preferences::LoadedSettings& settings)
    : captureScope(settings.captureScope),
      sizePreset(settings.sizePreset),
      enabledAppearances(settings.enabledAppearances),
      countdownSeconds(settings.countdownSeconds),
      countdownAfterRelaunch(settings.countdownAfterRelaunch),
      languages(settings.languages),
      outputSize(settings.outputSize),
      customCanvasWidth(settings.customCanvasWidth),
      customCanvasHeight(settings.customCanvasHeight),
      windowShadow(settings.windowShadow),
      lightBackground(settings.lightBackground),
      darkBackground(settings.darkBackground),
      env_(env),
      services_(services) {
    menuBar.hasBackground = settings.menuBarHasBackground;
    progressForward_ = progress.subscribe(
        [this](CaptureProgressModel::Field) { notices.announce(ViewChange::progress); });
}

ContentView::~ContentView() {
    stopIdleTimer();
}

std::vector<PlanEntry> ContentView::planEntries() const {
    std::vector<std::pair<std::string, std::string>> pairs;
    if (captureScope == CaptureScope::singleWindow && !languages.empty()) {
        for (const auto& language : languages)
            pairs.emplace_back(language.code, language.label);
    } else {
        pairs.emplace_back("", "Current");
    }
    std::vector<PlanEntry> entries;
    for (const auto& [code, label] : pairs) {
        for (AppearanceMode mode : kAppearanceOrder) {
            if (enabledAppearances.count(mode) == 0)
                continue;
            const std::string key = code.empty() ? std::string("current") : code;
            entries.push_back({key + "-" + rawString(mode), code, label, mode});
        }
    }
    return entries;
}

int ContentView::plannedShotCount() const {
    const int languageCount = captureScope == CaptureScope::allWindows || languages.empty()
                                  ? 1
                                  : static_cast<int>(languages.size());
    const int appearanceCount =
        enabledAppearances.empty() ? 1 : static_cast<int>(enabledAppearances.size());
    return languageCount * appearanceCount;
}

bool ContentView::captureDisabled() const {
    if (isWorking)
        return true;
    if (captureScope == CaptureScope::allWindows) {
        return std::none_of(compositeWindows.begin(), compositeWindows.end(),
                            [](const CompositeEntry& row) { return row.enabled; });
    }
    return !selectedTargetID.has_value();
}

bool ContentView::canRepeatAfterLanguage() const {
    if (captureScope == CaptureScope::allWindows)
        return false;
    if (languages.empty() || targetCurrentLangCode.empty())
        return false;
    return std::any_of(languages.begin(), languages.end(), [&](const LanguageSelection& l) {
        return !LanguageRelauncher::matchesLanguage(l.code, targetCurrentLangCode);
    });
}

Size ContentView::canvasSize() const {
    if (store == Store::flathub)  // the planned window with room for its shadow
        return FlathubExport::canvas(
            FlathubExport::withinLimit(placeholderWindowSize({}), captureScale()), captureScale());
    return resolvedSize(outputSize, customCanvasWidth, customCanvasHeight, screensOf(env_));
}

Size ContentView::placeholderWindowSize(Size /*canvas*/) const {
    if (captureScope == CaptureScope::allWindows)
        return {3024.0, 1890.0};
    double scale = 2.0;
    Size usable{1440.0, 900.0};
    if (auto screen = screensOf(env_).mainScreen()) {
        scale = screen->backingScaleFactor;
        usable = screen->visibleFrame.size();
    }
    double widthFactor = 0.5;
    double heightFactor = 0.5;
    switch (sizePreset) {
        case WindowSizePreset::half:
            break;
        case WindowSizePreset::threeQ:
            widthFactor = heightFactor = 0.75;
            break;
        case WindowSizePreset::full:  // wider than tall on purpose
            widthFactor = 0.92;
            heightFactor = 0.9;
            break;
        case WindowSizePreset::current:
            widthFactor = 0.7;
            heightFactor = 0.65;
            break;
    }
    return {scale * usable.width * widthFactor, scale * usable.height * heightFactor};
}

std::optional<CaptureTarget> ContentView::selectedTarget() const {
    return TargetLists::selectedTarget(targets, selectedTargetID);
}

void ContentView::handleCaptureError(const RunError& error) {
    progress.setStatusMessage(RunTexts::captureFailure(error, env_.platform));
}

void ContentView::cancelCapture() {
    if (captureTask)
        captureTask->cancel();
    progress.setStatusMessage(RunTexts::stopping);
}

void ContentView::showAllWindowsCaptureSummary() {
    auto summary = makeAllWindowsSummary(captureRecords);
    if (!summary || !env_.dialogs)
        return;
    env_.dialogs->showAlert(summary->headline, summary->informativeText(), AlertStyle::warning,
                            {"OK"});
}

void ContentView::restoreSourceSelection(const std::optional<std::string>& bundleID,
                                         const std::optional<std::string>& appName) {
    restoreAttempt(bundleID, appName, clock().now());  // one attempt: its deadline is now
}

void ContentView::restoreSourceSelectionWithRetry(const std::optional<std::string>& bundleID,
                                                  const std::optional<std::string>& appName) {
    restoreAttempt(bundleID, appName, clock().now() + std::chrono::milliseconds(5000));
}

void ContentView::restoreAttempt(std::optional<std::string> bundleID,
                                 std::optional<std::string> appName, Nanos deadline) {
    const auto targetsBefore = targets;
    const auto selectedBefore = selectedTargetID;
    auto announce = [&] {
        announceListsAndSelection(targetsBefore, compositeWindows, availableSpaces, selectedBefore,
                                  selectedSpaceID);
    };
    targets = services_.currentTargets();
    if (auto found = SourceSelection::findApplication(targets, bundleID, appName)) {
        selectedTargetID = found;
        announce();
        return;
    }
    if (clock().now() < deadline) {
        announce();
        clock().callAfter(std::chrono::milliseconds(250),
                          [this, bundleID = std::move(bundleID), appName = std::move(appName),
                           deadline] { restoreAttempt(bundleID, appName, deadline); });
        return;
    }
    selectedTargetID = SourceSelection::keptSelection(targets, selectedTargetID);
    announce();
}

void ContentView::chooseSaveFolder() {
    if (!env_.dialogs)
        return;
    auto folder = env_.dialogs->chooseFolder("Choose a folder for Zephyrdock output");
    if (!folder || folder->empty())
        return;
    services_.setSaveFolderURL(*folder);
    notices.announce(ViewChange::settings);  // the save folder button shows its name
    progress.setStatusMessage(RunTexts::saveFolderChosen(*folder));
}

void ContentView::revealInFinder(const std::string& path) {
    if (env_.dialogs)
        env_.dialogs->revealFolder(path);
}

}  // namespace zd
