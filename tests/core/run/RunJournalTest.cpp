// The journal of a run's changes: its record survives any value, each change is noted before
// it is made and dropped once undone, and a process with nothing outstanding keeps no record.
#include "run/RunJournal.h"

#include <gtest/gtest.h>

#include "control/LanguageRelauncher.h"
#include "run/JournaledBackends.h"
#include "testing/FakeAppearanceBackend.h"
#include "testing/FakeLanguageOverrideBackend.h"
#include "testing/FakeRunJournalBackend.h"

namespace zd {
namespace {

TEST(RunJournal, RecordsSurviveAnyValueAndTornOrForeignTextIsNoRecord) {
    const RunJournal::Record record{.owner = {41, "boot-1:900"},
                                    .sessionFolder = "/tmp/zd-session.a b\nc\\d",
                                    .sessionGroup = 77,
                                    .sessionProcesses = {{77, "boot-1:901"}},
                                    .darkBefore = false,
                                    .languageOverrides = {"org.gnome.gedit", "odd\\id\n"}};
    const std::string text = RunJournal::format(record);
    EXPECT_EQ(RunJournal::parse(text), record);
    const std::string head = "zephyrdock run journal 1\n";
    for (const std::string& bad : std::vector<std::string>{
             text.substr(0, text.size() - 1), head, head + "owner 1 s", head + "owner 0 s\n",
             head + "owner 1 s\nappearance grey\n", head + "owner 1 s\nlanguage a\\q\n"}) {
        EXPECT_EQ(RunJournal::parse(bad), std::nullopt) << bad;
    }
}

TEST(RunJournal, NotesEachChangeBeforeItAndDropsTheRecordOnceAllIsUndone) {
    testing::FakeRunJournalBackend backend;
    backend.stamps[5] = "b:1";
    RunJournal journal(backend, 5);
    testing::FakeAppearanceBackend appearance;  // Light before the run
    testing::FakeLanguageOverrideBackend overrides;
    JournaledAppearanceBackend journaledAppearance(appearance, journal);
    JournaledLanguageOverrideBackend journaledOverrides(overrides, journal);
    const std::string name = RunJournal::recordName({5, "b:1"});
    auto recorded = [&] { return RunJournal::parse(backend.records.at(name)).value(); };

    // A failing appearance write is still noted: the tool may have switched half-way.
    appearance.writeResult = std::nullopt;
    journaledAppearance.writeDarkMode(true);
    EXPECT_EQ(appearance.calls, (std::vector<std::string>{"read", "write dark"}));
    EXPECT_EQ(recorded().darkBefore, false);
    appearance.writeResult = ToolResult{0, ""};
    journaledAppearance.writeDarkMode(true);
    journaledOverrides.runDefaults({"write", "org.ed", "AppleLanguages", "-array", "de"});
    journaledOverrides.runDefaults({"read", "org.ed", "AppleLanguages"});
    EXPECT_EQ(recorded().languageOverrides, std::vector<std::string>{"org.ed"});
    EXPECT_EQ(recorded().owner, (RunJournal::Process{5, "b:1"}));

    journaledAppearance.writeDarkMode(false);  // the user's mode again
    EXPECT_EQ(recorded().darkBefore, std::nullopt);
    journaledOverrides.runDefaults({"delete", "org.ed", "AppleLanguages"});
    EXPECT_EQ(recorded().languageOverrides.size(), 1u) << "the locale key still stands";
    journaledOverrides.runDefaults({"delete", "org.ed", "AppleLocale"});
    EXPECT_TRUE(backend.records.empty());

    backend.stamps[90] = "b:2";
    journal.noteSession("/tmp/zd-session.x", 90, {90, 91});  // 91 already gone
    EXPECT_EQ(recorded().sessionProcesses, (std::vector<RunJournal::Process>{{90, "b:2"}}));
    journal.clearSession();
    EXPECT_TRUE(backend.records.empty());
}

}  // namespace
}  // namespace zd
