#include "run/RunRecovery.h"

#include "control/AppearanceController.h"
#include "control/LanguageRelauncher.h"
#include "env/ProcessBackend.h"
#include "env/RunJournalBackend.h"
#include "run/RunJournal.h"

namespace zd::RunRecovery {

namespace {

std::string joined(const std::vector<std::string>& parts) {
    std::string text;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (i > 0)
            text += i + 1 == parts.size() ? " and " : ", ";
        text += parts[i];
    }
    return text;
}

// Ends what is left of a private session: each recorded process that is still the same one,
// then its group (only while a member lives, since a group id can't be taken by another
// process as long as its group exists), then the folder.
void cleanSession(RunJournalBackend& journal, const RunJournal::Record& record, Outcome& outcome) {
    bool memberAlive = false;
    for (const auto& process : record.sessionProcesses) {
        if (journal.processStamp(process.pid) == process.stamp) {
            journal.endProcess(process.pid);
            ++outcome.processesEnded;
            memberAlive = true;
        }
    }
    if (memberAlive && record.sessionGroup > 0)
        journal.endProcessGroup(record.sessionGroup);
    if (!record.sessionFolder.empty()) {
        journal.removeFolder(record.sessionFolder);
        outcome.foldersRemoved = true;
    }
}

}  // namespace

std::optional<std::string> summary(const Outcome& outcome) {
    std::vector<std::string> parts;
    if (outcome.darkRestored)
        parts.push_back(std::string("the appearance (") +
                        (*outcome.darkRestored ? "Dark" : "Light") + " again)");
    for (const auto& bundleID : outcome.languages)
        parts.push_back("the language of " + bundleID);
    if (outcome.processesEnded > 0) {
        parts.push_back(
            std::to_string(outcome.processesEnded) +
            (outcome.processesEnded == 1 ? " leftover process" : " leftover processes") + " ended");
    }
    if (outcome.foldersRemoved)
        parts.emplace_back("the private display's temporary folder removed");
    if (parts.empty())
        return std::nullopt;
    return std::string(outcome.runs == 1 ? "An interrupted run" : "Interrupted runs") +
           " left changes behind; put back: " + joined(parts) + ".";
}

Task<std::optional<std::string>> recoverInterruptedRuns(Environment env,
                                                        RunJournalBackend& journal) {
    Outcome outcome;
    for (const std::string& name : journal.recordNames()) {
        const auto text = journal.readRecord(name);
        if (!text)
            continue;
        auto record = RunJournal::parse(*text);
        if (!record) {
            journal.removeRecord(name);  // records are written whole: this one is foreign
            continue;
        }
        // Its run is still going, or there was no telling its process apart when it began.
        if (record->owner.stamp.empty() ||
            journal.processStamp(record->owner.pid) == record->owner.stamp) {
            continue;
        }
        ++outcome.runs;
        RunJournal::Record left = *record;
        if (!record->sessionFolder.empty() || !record->sessionProcesses.empty()) {
            // The appearance and overrides it changed lived in the session: gone with it.
            cleanSession(journal, *record, outcome);
            journal.removeRecord(name);
            continue;
        }
        if (record->darkBefore && env.appearance) {
            const auto mode = *record->darkBefore ? AppearanceController::Mode::dark
                                                  : AppearanceController::Mode::light;
            if (AppearanceController::set(*env.appearance, mode)) {
                outcome.darkRestored = *record->darkBefore;
                left.darkBefore.reset();
            }
        }
        if (env.languageOverride && env.processes && env.clock && env.workers) {
            for (const auto& bundleID : record->languageOverrides) {
                if (env.processes->runningApplications(bundleID).empty())
                    LanguageRelauncher::clearOverride(*env.languageOverride, bundleID);
                else
                    co_await LanguageRelauncher::revertToOriginalLanguage(env, bundleID);
                outcome.languages.push_back(bundleID);
            }
            left.languageOverrides.clear();
        }
        if (left.hasChanges())
            (void)journal.writeRecord(name, RunJournal::format(left));
        else
            journal.removeRecord(name);
    }
    co_return summary(outcome);
}

}  // namespace zd::RunRecovery
