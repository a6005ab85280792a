#pragma once
// What a start does with the journals of runs that ended without their clean-up (killed, or
// the machine lost power): for each record whose owner is gone, it ends the processes of its
// private session (only those still the same processes, told by their stamps) and removes the
// session's folder; or, for a run on the user's own desktop, sets the appearance back to the
// user's mode and takes each language override away, restarting an application that runs in
// the test language in its own. What can't be done now (no display, no appearance tool)
// stays recorded for a later start. Both faces call this once at start.

#include <optional>
#include <string>
#include <vector>

#include "env/Environment.h"
#include "run/Task.h"

namespace zd {

class RunJournalBackend;

namespace RunRecovery {

// What was put back, for the one line that tells it.
struct Outcome {
    int runs = 0;                        // records of dead runs that were acted on
    std::optional<bool> darkRestored;    // the mode the appearance was set back to
    std::vector<std::string> languages;  // applications whose override was taken away
    int processesEnded = 0;
    bool foldersRemoved = false;
};

// The one line that tells it; none when nothing was done.
std::optional<std::string> summary(const Outcome& outcome);

// Acts on every record of a dead run. `env` may lack backends (no display yet): the parts
// that need them stay recorded. The result is `summary` of what was done.
Task<std::optional<std::string>> recoverInterruptedRuns(Environment env,
                                                        RunJournalBackend& journal);

}  // namespace RunRecovery
}  // namespace zd
