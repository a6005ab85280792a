// The Linux/X11 environment: xcb and Composite for windows, EWMH for desktops and sizing,
// /proc and signals for applications, GNOME colour scheme and XSETTINGS for the appearance,
// tesseract for text, AT-SPI for the target's menus, QPainter for drawing, a JSON file for
// settings.

#include "common/PlatformEnvironment.h"

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <system_error>

#include "QtCanvasFactory.h"
#include "QtImageCodec.h"
#include "common/FileRunJournalBackend.h"
#include "common/FileSettingsStore.h"
#include "common/QtClock.h"
#include "linux/AtspiMenuBackend.h"
#include "linux/EwmhSpacesBackend.h"
#include "linux/EwmhWindowSizingBackend.h"
#include "linux/GnomeAppearanceBackend.h"
#include "linux/LanguageOverrideStore.h"
#include "linux/ProcProcessBackend.h"
#include "linux/ResourceBundleLocations.h"
#include "linux/TesseractTextRecognitionBackend.h"
#include "linux/XcbCaptureBackend.h"
#include "linux/XcbConnection.h"
#include "linux/XcbScreenBackend.h"
#include "linux/XcbWindowListBackend.h"
#include "model/ResourceBundle.h"
#include "run/JournaledBackends.h"

namespace zd {
using namespace x11;

namespace {

ProcProcessBackend::Options processOptions() {
    ProcProcessBackend::Options options;
    if (const char* display = std::getenv("DISPLAY"))
        options.display = display;
    return options;
}

}  // namespace

struct PlatformEnvironment::Impl {
    explicit Impl(std::shared_ptr<XcbConnection> connection, const Options& options)
        : workers(clock),
          x(std::move(connection)),
          screens(x),
          windowList(x),
          capture(x),
          spaces(x),
          sizing(x),
          processes(processOptions()),
          settings(options.settingsPath.empty()
                       ? FileSettingsStore::defaultPath().value_or("zephyrdock-settings.json")
                       : options.settingsPath),
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
        env.menus = &menus;
        env.canvases = &canvases;
        env.settings = &settings;
        env.platform = HostPlatform::x11;
        // Windows are listed under the name the user's launcher shows for their application.
        ApplicationNames names = [this](std::int32_t pid) -> std::optional<std::string> {
            auto app = processes.runningApplication(pid);
            if (!app || !app->bundleIdentifier || app->localizedName.empty())
                return std::nullopt;
            return app->localizedName;
        };
        windowList.setApplicationNames(names);
        capture.setApplicationNames(std::move(names));
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
    std::shared_ptr<XcbConnection> x;
    XcbScreenBackend screens;
    QtImageCodec images;
    XcbWindowListBackend windowList;
    XcbCaptureBackend capture;
    EwmhSpacesBackend spaces;
    EwmhWindowSizingBackend sizing;
    ProcProcessBackend processes;
    LanguageOverrideStore overrides;
    GnomeAppearanceBackend appearance;
    TesseractTextRecognitionBackend text;
    AtspiMenuBackend menus;
    QtCanvasFactory canvases;
    FileSettingsStore settings;
    ResourceBundle bundle;
    std::optional<JournaledAppearanceBackend> journaledAppearance;
    std::optional<JournaledLanguageOverrideBackend> journaledOverrides;
    Environment env;
    Environment unjournaled;
};

std::unique_ptr<SettingsStore> PlatformEnvironment::openSettings(const std::string& path) {
    auto file = path.empty() ? FileSettingsStore::defaultPath() : path;
    if (!file)
        return nullptr;
    return std::make_unique<FileSettingsStore>(*file);
}

std::optional<std::string> PlatformEnvironment::userSettingsFile() {
    return FileSettingsStore::defaultPath();
}

std::string PlatformEnvironment::userSettingsPlace() {
    return "$XDG_CONFIG_HOME/zephyrdock/settings.json (~/.config when XDG_CONFIG_HOME is unset)";
}

// $XDG_STATE_HOME/zephyrdock/runs (~/.local/state when unset); none without a home.
std::unique_ptr<RunJournalBackend> PlatformEnvironment::journalBackend() {
    std::filesystem::path state;
    if (const char* xdg = std::getenv("XDG_STATE_HOME"); xdg && xdg[0] == '/')
        state = xdg;
    else if (const char* home = std::getenv("HOME"); home && home[0] == '/')
        state = std::filesystem::path(home) / ".local" / "state";
    else
        return nullptr;
    return std::make_unique<FileRunJournalBackend>(state / "zephyrdock" / "runs");
}

Expected<std::unique_ptr<PlatformEnvironment>, std::string> PlatformEnvironment::create(
    const Options& options) {
    auto connection = XcbConnection::open();
    if (!connection)
        return unexpected(connection.error());
    auto impl = std::make_unique<Impl>(std::move(*connection), options);
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
