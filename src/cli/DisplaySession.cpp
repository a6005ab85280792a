#include "DisplaySession.h"

#include <unistd.h>

#include <chrono>
#include <cstdlib>

#include "OffscreenGui.h"
#include "common/PlatformEnvironment.h"
#include "linux/ToolRunner.h"
#include "run/RunRecovery.h"

extern char** environ;

namespace zd::cli {

namespace {

// Puts back what killed runs left, in the environment given (possibly without a display), and
// tells it in one line.
void recover(const Environment& env, RunJournalBackend& backend, std::ostream& err) {
    std::optional<std::string> line;
    TaskHandle task = spawn(
        [](Environment e, RunJournalBackend& b, std::optional<std::string>& out) -> Task<void> {
            out = co_await RunRecovery::recoverInterruptedRuns(e, b);
        }(env, backend, line));
    processEventsUntil([&] { return task.isDone(); }, std::chrono::seconds(60));
    if (line)
        err << "zephyrdock: " << *line << "\n";
}

}  // namespace

Expected<std::unique_ptr<DisplaySession>, std::string> DisplaySession::open(const Options& options,
                                                                            std::ostream& err) {
    ensureOffscreenGui();
    // Found now: a private display brings XDG folders of its own.
    Journal journal;
    journal.backend = PlatformEnvironment::journalBackend();
    if (journal.backend) {
        journal.journal = std::make_unique<RunJournal>(*journal.backend, getpid());
    }
    PlatformEnvironment::Options platformOptions;
    platformOptions.journal = journal.journal.get();
    // Resolved now: the private display brings XDG folders of its own, and the user's settings
    // must still be the ones read.
    platformOptions.settingsPath =
        options.settingsFile.value_or(PlatformEnvironment::userSettingsFile().value_or(""));

    std::string whyNotUsers = "DISPLAY is not set";
    if (!options.headless) {
        const char* display = std::getenv("DISPLAY");
        if (display && *display) {
            auto platform = PlatformEnvironment::create(platformOptions);
            if (platform) {
                if (journal.backend)
                    recover((*platform)->environmentWithoutJournal(), *journal.backend, err);
                return std::unique_ptr<DisplaySession>(new DisplaySession(
                    std::move(journal), nullptr, std::move(*platform), err, options.revealFolders));
            }
            whyNotUsers = platform.error();
        }
        err << "zephyrdock: no display to work on (" << whyNotUsers
            << "); starting a private headless one\n";
    }

    // Without the user's display only what a dead private session left can be put back; the
    // rest stays recorded for a start that has the display.
    if (journal.backend)
        recover(Environment{}, *journal.backend, err);
    auto session = x11::HeadlessSession::start();
    if (!session) {
        return unexpected(
            "no window server: " + whyNotUsers +
            ", and a private headless display could not be started: " + session.error());
    }
    if (journal.journal) {
        journal.journal->noteSession((*session)->directory().string(), (*session)->processGroup(),
                                     (*session)->processes());
    }
    (*session)->applyToCurrentProcess();
    // What a run changes there (appearance, overrides) lives and ends with the session: only
    // the session itself is journaled, never as if it were the user's desktop.
    platformOptions.journal = nullptr;
    auto platform = PlatformEnvironment::create(platformOptions);
    if (!platform) {
        session->reset();
        if (journal.journal)
            journal.journal->clearSession();
        return unexpected("cannot use the private headless display: " + platform.error());
    }
    return std::unique_ptr<DisplaySession>(new DisplaySession(
        std::move(journal), std::move(*session), std::move(*platform), err, options.revealFolders));
}

DisplaySession::DisplaySession(Journal journal, std::unique_ptr<x11::HeadlessSession> session,
                               std::unique_ptr<PlatformEnvironment> platform, std::ostream& err,
                               bool revealFolders)
    : journal_(std::move(journal)),
      session_(std::move(session)),
      platform_(std::move(platform)),
      dialogs_(err, revealFolders),
      probe_(session_ ? session_->display() : std::string()) {
    platform_->environment().dialogs = &dialogs_;
}

DisplaySession::~DisplaySession() {
    platform_.reset();
    session_.reset();
    if (journal_.journal)
        journal_.journal->clearSession();
}

std::vector<std::string> DisplaySession::childEnvironment() const {
    if (session_)
        return session_->childEnvironment();
    return x11::environmentWith({});
}

}  // namespace zd::cli
