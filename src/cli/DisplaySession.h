#pragma once
// Where the command line's live commands run: the user's display when one answers, else (or
// with --headless) a private headless desktop started for this command and torn down when the
// object goes, on every way out. It holds the Linux environment built over that display and
// the journal of what this process changes; on opening, it first puts back what runs that
// were killed left behind, and says so in one line.

#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "ConsoleDialogBackend.h"
#include "common/PlatformEnvironment.h"
#include "env/RunJournalBackend.h"
#include "linux/DisplayProbe.h"
#include "linux/HeadlessSession.h"
#include "model/Expected.h"
#include "run/RunJournal.h"

namespace zd::cli {

class DisplaySession {
  public:
    struct Options {
        bool headless = false;  // a private display even when the user's answers
        std::optional<std::string> settingsFile;
        bool revealFolders = false;
    };

    // The text says why there is no display: none reachable and the private one didn't start.
    static Expected<std::unique_ptr<DisplaySession>, std::string> open(const Options& options,
                                                                       std::ostream& err);
    ~DisplaySession();
    DisplaySession(const DisplaySession&) = delete;
    DisplaySession& operator=(const DisplaySession&) = delete;

    Environment& environment() { return platform_->environment(); }
    ResourceBundle& resourceBundle() { return platform_->resourceBundle(); }
    bool isHeadless() const { return session_ != nullptr; }
    // The whole environment for a program started on this display.
    std::vector<std::string> childEnvironment() const;
    // A program started on a private display for the run: noted so that, should this process
    // be killed, the next start ends it with the display's helpers. Nothing on the user's.
    void notePrivateProcess(int pid) {
        if (session_ && journal_.journal)
            journal_.journal->noteSessionProcess(pid);
    }
    // The display server still answers (one round trip).
    bool displayAnswers() { return probe_.answers(); }

  private:
    struct Journal {
        std::unique_ptr<RunJournalBackend> backend;
        std::unique_ptr<RunJournal> journal;
    };
    DisplaySession(Journal journal, std::unique_ptr<x11::HeadlessSession> session,
                   std::unique_ptr<PlatformEnvironment> platform, std::ostream& err,
                   bool revealFolders);

    // First, so it goes last: the environment notes into it until it goes.
    Journal journal_;
    // Before the environment, so it goes after it: the connection closes before its display.
    std::unique_ptr<x11::HeadlessSession> session_;
    std::unique_ptr<PlatformEnvironment> platform_;
    ConsoleDialogBackend dialogs_;
    x11::DisplayProbe probe_;
};

}  // namespace zd::cli
