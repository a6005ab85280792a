// The macOS environment: ScreenCaptureKit and the window list for windows, the private desktop
// calls for Spaces, Accessibility for sizing, NSWorkspace for applications, System Events for
// the appearance, Vision for text, NSUserDefaults for settings (a JSON file when one is named),
// QPainter for drawing, plain files under Application Support for the run journal.

#include "common/PlatformEnvironment.h"

#include <QCoreApplication>
#include <QDir>
#include <optional>

#include "QtCanvasFactory.h"
#include "QtImageCodec.h"
#include "common/FileRunJournalBackend.h"
#include "common/FileSettingsStore.h"
#include "common/QtClock.h"
#include "env/RunJournalBackend.h"
#include "macos/AXWindowSizingBackend.h"
#include "macos/CGSSpacesBackend.h"
#include "macos/CGWindowListBackend.h"
#include "macos/MacAppearanceBackend.h"
#include "macos/MacLanguageOverrideBackend.h"
#include "macos/MacProcessBackend.h"
#include "macos/NSScreenBackend.h"
#include "macos/ScreenCaptureKitBackend.h"
#include "macos/UserDefaultsSettingsStore.h"
#include "macos/UserFolders.h"
#include "macos/VisionTextRecognitionBackend.h"
#include "model/ResourceBundle.h"
#include "run/JournaledBackends.h"

namespace zd {
using namespace mac;

namespace {

// The application's bundle identifier (Info.plist): the defaults domain of the application
// and of the command line alike, and the name of their folder in Application Support.
constexpr const char* bundleIdentifier = "app.zephyrdock.Zephyrdock";

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
        : workers(clock),
          settings(PlatformEnvironment::openSettings(options.settingsPath)),
          bundle(resourceBundleCandidates()) {
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
        env.settings = settings.get();
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
    std::unique_ptr<SettingsStore> settings;
    ResourceBundle bundle;
    std::optional<JournaledAppearanceBackend> journaledAppearance;
    std::optional<JournaledLanguageOverrideBackend> journaledOverrides;
    Environment env;
    Environment unjournaled;
};

// A path names a file, as on Linux; without one, the application's defaults.
std::unique_ptr<SettingsStore> PlatformEnvironment::openSettings(const std::string& path) {
    if (path.empty())
        return std::make_unique<UserDefaultsSettingsStore>(bundleIdentifier);
    return std::make_unique<FileSettingsStore>(path);
}

std::optional<std::string> PlatformEnvironment::userSettingsFile() {
    return std::nullopt;
}

std::string PlatformEnvironment::userSettingsPlace() {
    return std::string("the user defaults of ") + bundleIdentifier;
}

// ~/Library/Application Support/<bundle id>/runs, shared by the application and the command
// line, so either one puts back what the other's crashed run left.
std::unique_ptr<RunJournalBackend> PlatformEnvironment::journalBackend() {
    auto support = UserFolders::applicationSupport();
    if (!support)
        return nullptr;
    return std::make_unique<FileRunJournalBackend>(*support / bundleIdentifier / "runs");
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
