// The macOS environment: ScreenCaptureKit and the window list for windows, the private desktop
// calls for Spaces, Accessibility for sizing, NSWorkspace for applications, System Events for
// the appearance, Vision for text, NSUserDefaults for settings, QPainter for drawing.

#include "common/PlatformEnvironment.h"

#include <QCoreApplication>
#include <QDir>
#include <optional>

#include "QtCanvasFactory.h"
#include "QtImageCodec.h"
#include "common/QtClock.h"
#include "macos/AXWindowSizingBackend.h"
#include "macos/CGSSpacesBackend.h"
#include "macos/CGWindowListBackend.h"
#include "macos/MacAppearanceBackend.h"
#include "macos/MacLanguageOverrideBackend.h"
#include "macos/MacProcessBackend.h"
#include "macos/NSScreenBackend.h"
#include "macos/ScreenCaptureKitBackend.h"
#include "macos/UserDefaultsSettingsStore.h"
#include "macos/VisionTextRecognitionBackend.h"
#include "env/RunJournalBackend.h"
#include "model/ResourceBundle.h"
#include "run/JournaledBackends.h"

namespace zd {
using namespace mac;

namespace {

// Inside Zephyrdock.app the bundle lies in Contents/Resources; in a build tree beside the
// executable.
std::vector<std::string> resourceBundleCandidates() {
    const QString executableFolder = QCoreApplication::applicationDirPath();
    return {QDir(executableFolder + "/../Resources").absolutePath().toStdString(),
            executableFolder.toStdString()};
}

}  // namespace

struct PlatformEnvironment::Impl {
    explicit Impl(const Options& options)
        : workers(clock), settings(options.settingsPath), bundle(resourceBundleCandidates()) {
        env.clock = &clock;
        env.workers = &workers;
        env.screens = &screens;
        env.images = &images;
        env.windowList = &windowList;
        env.capture = &capture;
        env.spaces = &spaces;
        env.sizing = &sizing;
        env.processes = &processes;
        env.languageOverride = &overrides;
        env.appearance = &appearance;
        env.textRecognition = &text;
        env.canvases = &canvases;
        env.settings = &settings;
        unjournaled = env;
        if (options.journal) {
            journaledAppearance.emplace(appearance, *options.journal);
            journaledOverrides.emplace(overrides, *options.journal);
            env.appearance = &*journaledAppearance;
            env.languageOverride = &*journaledOverrides;
        }
    }

    QtClock clock;
    QtWorkerPool workers;
    NSScreenBackend screens;
    QtImageCodec images;
    CGWindowListBackend windowList;
    ScreenCaptureKitBackend capture;
    CGSSpacesBackend spaces;
    AXWindowSizingBackend sizing;
    MacProcessBackend processes;
    MacLanguageOverrideBackend overrides;
    MacAppearanceBackend appearance;
    VisionTextRecognitionBackend text;
    QtCanvasFactory canvases;
    // A settings path names a defaults suite instead of the application's own domain.
    UserDefaultsSettingsStore settings;
    ResourceBundle bundle;
    std::optional<JournaledAppearanceBackend> journaledAppearance;
    std::optional<JournaledLanguageOverrideBackend> journaledOverrides;
    Environment env;
    Environment unjournaled;
};

// The macOS edition keeps no journal yet: a crashed run's appearance and language keys stay
// as the run left them.
std::unique_ptr<RunJournalBackend> PlatformEnvironment::journalBackend() {
    return nullptr;
}

Expected<std::unique_ptr<PlatformEnvironment>, std::string> PlatformEnvironment::create(
    const Options& options) {
    auto impl = std::make_unique<Impl>(options);
    return std::unique_ptr<PlatformEnvironment>(new PlatformEnvironment(std::move(impl)));
}

PlatformEnvironment::PlatformEnvironment(std::unique_ptr<Impl> impl) : impl_(std::move(impl)) {}
PlatformEnvironment::~PlatformEnvironment() = default;

Environment& PlatformEnvironment::environment() {
    return impl_->env;
}
ResourceBundle& PlatformEnvironment::resourceBundle() {
    return impl_->bundle;
}
Environment PlatformEnvironment::environmentWithoutJournal() {
    Environment env = impl_->unjournaled;
    env.dialogs = impl_->env.dialogs;
    return env;
}

}  // namespace zd
