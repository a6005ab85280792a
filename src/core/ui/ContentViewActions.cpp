// ContentView: what the window's controls do. Each action changes the state, announces it and
// writes the keys its control persists, through the one writer of each key.

#include <algorithm>
#include <utility>

#include "env/DialogBackend.h"
#include "env/SettingsStore.h"
#include "ui/ContentView.h"
#include "ui/WindowTexts.h"

namespace zd {

namespace {

// The picture files a background may be: what the image codecs read.
const std::vector<std::string> kImageExtensions{"png",  "jpg", "jpeg", "tif", "tiff",
                                                "webp", "bmp", "gif",  "heic"};

}  // namespace

void ContentView::persist(const std::function<void(SettingsStore&)>& write) {
    if (env_.settings)
        write(*env_.settings);
}

void ContentView::setPulseRevealButton(bool on) {
    pulseRevealButton = on;
    notices.announce(ViewChange::revealPulse);
}

void ContentView::setCaptureScope(CaptureScope scope) {
    captureScope = scope;
    notices.announce(ViewChange::settings);
    persist([scope](SettingsStore& s) { Preferences::setCaptureScope(s, scope); });
}

void ContentView::setSizePreset(WindowSizePreset preset) {
    sizePreset = preset;
    notices.announce(ViewChange::settings);
    persist([preset](SettingsStore& s) { Preferences::setWindowSizePreset(s, preset); });
}

void ContentView::toggleAppearance(AppearanceMode mode) {
    if (enabledAppearances.count(mode) == 0) {
        enabledAppearances.insert(mode);
    } else if (enabledAppearances.size() > 1) {
        enabledAppearances.erase(mode);
    }  // else the last one stays on, and the keys are still written
    notices.announce(ViewChange::settings);
    const bool light = enabledAppearances.count(AppearanceMode::light) > 0;
    const bool dark = enabledAppearances.count(AppearanceMode::dark) > 0;
    persist([light, dark](SettingsStore& s) {
        Preferences::setCaptureLight(s, light);
        Preferences::setCaptureDark(s, dark);
    });
}

void ContentView::addLanguage(LanguageSelection selection) {
    clock().post(guarded([this, selection = std::move(selection)] {
        const bool listed = std::any_of(languages.begin(), languages.end(),
                                        [&](const auto& l) { return l.code == selection.code; });
        if (listed)
            return;
        languages.push_back(selection);
        notices.announce(ViewChange::settings);
        persist([this](SettingsStore& s) { Preferences::setLanguages(s, languages); });
    }));
}

void ContentView::removeLanguage(LanguageSelection selection) {
    clock().post(guarded([this, code = std::move(selection.code)] {
        std::erase_if(languages, [&](const LanguageSelection& l) { return l.code == code; });
        notices.announce(ViewChange::settings);
        persist([this](SettingsStore& s) { Preferences::setLanguages(s, languages); });
    }));
}

void ContentView::setOutputSize(OutputSize size) {
    outputSize = size;
    notices.announce(ViewChange::settings);
    persist([size](SettingsStore& s) { Preferences::setOutputSize(s, size); });
}

void ContentView::setCustomCanvasWidth(int width) {
    customCanvasWidth = width;
    notices.announce(ViewChange::settings);
}

void ContentView::setCustomCanvasHeight(int height) {
    customCanvasHeight = height;
    notices.announce(ViewChange::settings);
}

void ContentView::commitCustomCanvasWidth() {
    persist([this](SettingsStore& s) { Preferences::setCustomCanvasWidth(s, customCanvasWidth); });
}

void ContentView::commitCustomCanvasHeight() {
    persist(
        [this](SettingsStore& s) { Preferences::setCustomCanvasHeight(s, customCanvasHeight); });
}

void ContentView::setWindowShadow(bool on) {
    windowShadow = on;
    notices.announce(ViewChange::settings);
    persist([on](SettingsStore& s) { Preferences::setWindowShadow(s, on); });
}

void ContentView::setBackgroundKind(AppearanceMode mode, BackgroundKind kind) {
    (mode == AppearanceMode::light ? lightBackground : darkBackground).kind = kind;
    notices.announce(ViewChange::settings);
    persist([mode, kind](SettingsStore& s) { Preferences::setBackgroundKind(s, mode, kind); });
}

void ContentView::setBackgroundURL(AppearanceMode mode, std::optional<std::string> path) {
    (mode == AppearanceMode::light ? lightBackground : darkBackground).url = path;
    notices.announce(ViewChange::settings);
    persist([mode, &path](SettingsStore& s) { Preferences::setBackgroundURL(s, mode, path); });
}

void ContentView::setBackgroundFillColor(AppearanceMode mode, Color color) {
    (mode == AppearanceMode::light ? lightBackground : darkBackground).fillColor = color;
    notices.announce(ViewChange::settings);
}

void ContentView::chooseBackgroundImage(AppearanceMode mode) {
    if (!env_.dialogs)
        return;
    if (auto chosen = env_.dialogs->chooseImageFile(kImageExtensions))
        setBackgroundURL(mode, std::move(chosen));
}

bool ContentView::handleDrop(AppearanceMode mode, const std::vector<std::string>& urls) {
    if (urls.empty())
        return false;
    if (auto path = WindowTexts::firstLocalFile(urls))
        setBackgroundURL(mode, std::move(path));
    return true;
}

void ContentView::setCountdownSeconds(int seconds) {
    countdownSeconds = seconds;
    notices.announce(ViewChange::settings);
    persist([seconds](SettingsStore& s) { Preferences::setCountdownSeconds(s, seconds); });
}

void ContentView::setCountdownAfterRelaunch(bool on) {
    countdownAfterRelaunch = on;
    notices.announce(ViewChange::settings);
    persist([on](SettingsStore& s) { Preferences::setCountdownAfterRelaunch(s, on); });
}

void ContentView::setMenuBar(MenuBarConfig config) {
    menuBar = std::move(config);
    notices.announce(ViewChange::settings);
}

void ContentView::setVariantName(std::string name) {
    variantName = std::move(name);
    notices.announce(ViewChange::settings);
}

void ContentView::setDestinationMode(DestinationMode mode) {
    destinationMode = mode;
    notices.announce(ViewChange::lastRun);
}

void ContentView::setShowingWindowsPopover(bool showing) {
    showingWindowsPopover = showing;
    notices.announce(ViewChange::settings);
}

void ContentView::setSelectedTargetID(std::optional<std::uint32_t> id) {
    const auto before = selectedTargetID;
    selectedTargetID = id;
    announceListsAndSelection(targets, compositeWindows, availableSpaces, before, selectedSpaceID);
}

void ContentView::setSelectedSpaceID(std::uint64_t id) {
    const auto before = selectedSpaceID;
    selectedSpaceID = id;
    if (id != before)
        notices.announce(ViewChange::selection);
    reloadSpaces();
    reloadTargets();
    reloadCompositeWindows();
}

void ContentView::setCompositeWindowEnabled(std::uint32_t id, bool enabled) {
    for (auto& row : compositeWindows) {
        if (row.id == id)
            row.enabled = enabled;
    }
    notices.announce(ViewChange::lists);
}

void ContentView::moveCompositeWindow(std::size_t from, std::size_t to) {
    if (from >= compositeWindows.size() || to >= compositeWindows.size())
        return;
    auto row = compositeWindows.begin() + static_cast<std::ptrdiff_t>(from);
    auto target = compositeWindows.begin() + static_cast<std::ptrdiff_t>(to);
    if (from < to)
        std::rotate(row, row + 1, target + 1);
    else
        std::rotate(target, row, row + 1);
    notices.announce(ViewChange::lists);
}

}  // namespace zd
