// A start after a crash: what the dead runs' records make it put back, end and remove, and
// what it leaves alone (a live run, a reused pid, what can't be done yet).
#include "run/RunRecovery.h"

#include <gtest/gtest.h>

#include "run/RunJournal.h"
#include "testing/FakeAppearanceBackend.h"
#include "testing/FakeLanguageOverrideBackend.h"
#include "testing/FakeProcessBackend.h"
#include "testing/FakeRunJournalBackend.h"
#include "testing/ManualClock.h"

namespace zd {
namespace {

struct RunRecoveryTest : ::testing::Test {
    testing::ManualClock clock;
    testing::InlineWorkerPool workers;
    testing::FakeRunJournalBackend journal;
    testing::FakeAppearanceBackend appearance;
    testing::FakeLanguageOverrideBackend overrides;
    testing::FakeProcessBackend processes;

    Environment fullEnvironment() {
        Environment env;
        env.clock = &clock;
        env.workers = &workers;
        env.appearance = &appearance;
        env.languageOverride = &overrides;
        env.processes = &processes;
        return env;
    }
    void keep(const RunJournal::Record& record) {
        journal.records[RunJournal::recordName(record.owner)] = RunJournal::format(record);
    }
    std::optional<std::string> recover(Environment env) {
        std::optional<std::optional<std::string>> line;
        spawn([](Environment e, testing::FakeRunJournalBackend& j,
                 std::optional<std::optional<std::string>>& out) -> Task<void> {
            out = co_await RunRecovery::recoverInterruptedRuns(e, j);
        }(env, journal, line));
        EXPECT_TRUE(clock.runUntilIdle());
        return line.value();
    }
};

TEST_F(RunRecoveryTest, PutsBackTheDesktopOfADeadRunAndLeavesALiveOneAlone) {
    RunJournal::Record dead;
    dead.owner = {10, "b:100"};  // pid 10 now runs something else
    dead.darkBefore = false;
    dead.languageOverrides = {"org.ed", "org.quit"};
    keep(dead);
    RunJournal::Record live;
    live.owner = {11, "b:110"};
    live.darkBefore = true;
    keep(live);
    journal.stamps = {{10, "b:999"}, {11, "b:110"}};
    RunningApplication editor;
    editor.pid = 30;
    editor.bundleIdentifier = "org.ed";
    processes.add(editor);
    processes.locations["org.ed"] = "/apps/ed";

    EXPECT_EQ(recover(fullEnvironment()),
              "An interrupted run left changes behind; put back: the appearance (Light again), "
              "the language of org.ed and the language of org.quit.");
    EXPECT_EQ(appearance.calls, std::vector<std::string>{"write light"});
    EXPECT_EQ(overrides.runs.size(), 4u);  // both keys of both applications deleted
    EXPECT_EQ(processes.launches.size(), 1u) << "the running one restarts in its own language";
    EXPECT_EQ(journal.records.size(), 1u);
    EXPECT_TRUE(journal.records.count(RunJournal::recordName(live.owner)));
}

TEST_F(RunRecoveryTest, EndsOnlyTheSameProcessesOfADeadSessionAndRemovesItsFolder) {
    RunJournal::Record dead;
    dead.owner = {10, "b:100"};
    dead.sessionFolder = "/tmp/zd-session.q";
    dead.sessionGroup = 20;
    dead.sessionProcesses = {{20, "b:200"}, {21, "b:210"}, {22, "b:220"}};
    dead.darkBefore = true;  // the session's own appearance: gone with it
    keep(dead);
    journal.stamps = {{20, "b:200"}, {21, "b:211"}, {22, "b:220"}};  // 21 is another process

    EXPECT_EQ(recover(Environment{}),
              "An interrupted run left changes behind; put back: 2 leftover processes ended and "
              "the private display's temporary folder removed.");
    EXPECT_EQ(journal.calls, (std::vector<std::string>{"end 20", "end 22", "end group 20",
                                                       "remove /tmp/zd-session.q"}));
    EXPECT_TRUE(journal.records.empty());
    EXPECT_TRUE(appearance.calls.empty());

    // Every process gone already: its group id may be another's by now.
    journal.calls.clear();
    journal.stamps.clear();
    keep(dead);
    recover(Environment{});
    EXPECT_EQ(journal.calls, std::vector<std::string>{"remove /tmp/zd-session.q"});
}

TEST_F(RunRecoveryTest, WhatCantBeDoneYetStaysRecordedAndForeignRecordsGo) {
    RunJournal::Record dead;
    dead.owner = {10, "b:100"};
    dead.darkBefore = false;
    dead.languageOverrides = {"org.ed"};
    keep(dead);
    journal.records["run-junk"] = "not a record";
    appearance.writeResult = std::nullopt;  // no appearance tool now

    Environment env;
    env.appearance = &appearance;
    EXPECT_EQ(recover(env), std::nullopt);
    ASSERT_EQ(journal.records.size(), 1u);
    EXPECT_EQ(RunJournal::parse(journal.records.begin()->second), dead);

    appearance.writeResult = ToolResult{0, ""};
    EXPECT_NE(recover(fullEnvironment()), std::nullopt);
    EXPECT_TRUE(journal.records.empty());
}

}  // namespace
}  // namespace zd
