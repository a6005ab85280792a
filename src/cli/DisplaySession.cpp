#include "DisplaySession.h"

#include <cstdlib>

#include "OffscreenGui.h"
#include "linux/FileSettingsStore.h"
#include "linux/ToolRunner.h"

extern char** environ;

namespace zd::cli {

Expected<std::unique_ptr<DisplaySession>, std::string> DisplaySession::open(const Options& options,
                                                                            std::ostream& err) {
    ensureOffscreenGui();
    PlatformEnvironment::Options platformOptions;
    // Resolved now: the private display brings XDG folders of its own, and the user's settings
    // must still be the ones read.
    platformOptions.settingsPath =
        options.settingsFile.value_or(FileSettingsStore::defaultPath().value_or(""));

    std::string whyNotUsers = "DISPLAY is not set";
    if (!options.headless) {
        const char* display = std::getenv("DISPLAY");
        if (display && *display) {
            auto platform = PlatformEnvironment::create(platformOptions);
            if (platform) {
                return std::unique_ptr<DisplaySession>(
                    new DisplaySession(nullptr, std::move(*platform), err, options.revealFolders));
            }
            whyNotUsers = platform.error();
        }
        err << "zephyrdock: no display to work on (" << whyNotUsers
            << "); starting a private headless one\n";
    }

    auto session = x11::HeadlessSession::start();
    if (!session) {
        return unexpected(
            "no window server: " + whyNotUsers +
            ", and a private headless display could not be started: " + session.error());
    }
    (*session)->applyToCurrentProcess();
    auto platform = PlatformEnvironment::create(platformOptions);
    if (!platform)
        return unexpected("cannot use the private headless display: " + platform.error());
    return std::unique_ptr<DisplaySession>(
        new DisplaySession(std::move(*session), std::move(*platform), err, options.revealFolders));
}

DisplaySession::DisplaySession(std::unique_ptr<x11::HeadlessSession> session,
                               std::unique_ptr<PlatformEnvironment> platform, std::ostream& err,
                               bool revealFolders)
    : session_(std::move(session)), platform_(std::move(platform)), dialogs_(err, revealFolders) {
    platform_->environment().dialogs = &dialogs_;
}

DisplaySession::~DisplaySession() {
    platform_.reset();
    session_.reset();
}

std::vector<std::string> DisplaySession::childEnvironment() const {
    if (session_)
        return session_->childEnvironment();
    return x11::environmentWith({});
}

}  // namespace zd::cli
