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
    Environment full{.clock = &clock,
                     .workers = &workers,
                     .processes = &processes,
                     .languageOverride = &overrides,
                     .appearance = &appearance};

    void keep(const RunJournal::Record& record) {
        journal.records[RunJournal::recordName(record.owner)] = RunJournal::format(record);
    }
    std::optional<std::string> recover(Environment env) {
        std::optional<std::optional<std::string>> line;
        spawn([](Environment e, RunJournalBackend& j, auto& out) -> Task<void> {
            out = co_await RunRecovery::recoverInterruptedRuns(e, j);
        }(env, journal, line));
        EXPECT_TRUE(clock.runUntilIdle());
        return line.value();
    }
};

TEST_F(RunRecoveryTest, PutsBackTheDesktopOfADeadRunOnceItCanAndLeavesALiveOneAlone) {
    keep({.owner = {10, "b:100"}, .darkBefore = false, .languageOverrides = {"org.ed", "org.q"}});
    keep({.owner = {11, "b:110"}, .darkBefore = true});
    journal.records["run-junk"] = "not a record";
    journal.stamps = {{10, "b:999"}, {11, "b:110"}};  // pid 10 is another process by now
    processes.add({.pid = 30, .bundleIdentifier = "org.ed"});
    processes.locations["org.ed"] = "/apps/ed";

    appearance.writeResult = std::nullopt;  // no appearance tool, no language store yet
    EXPECT_EQ(recover({.clock = &clock, .workers = &workers, .appearance = &appearance}),
              std::nullopt);
    EXPECT_EQ(journal.records.size(), 2u) << "both kept, the foreign one gone";

    appearance.writeResult = ToolResult{0, ""};
    EXPECT_EQ(recover(full),
              "An interrupted run left changes behind; put back: the appearance (Light again), "
              "the language of org.ed and the language of org.q.");
    EXPECT_EQ(appearance.calls.back(), "write light");
    EXPECT_EQ(overrides.runs.size(), 4u);  // both keys of both applications deleted
    EXPECT_EQ(processes.launches.size(), 1u) << "the running one restarts in its own language";
    EXPECT_EQ(journal.records.size(), 1u);
    EXPECT_TRUE(journal.records.count(RunJournal::recordName({11, "b:110"})));
}

TEST_F(RunRecoveryTest, EndsOnlyTheSameProcessesOfADeadSessionAndRemovesItsFolder) {
    const RunJournal::Record dead{.owner = {10, "b:100"},
                                  .sessionFolder = "/tmp/zd-session.q",
                                  .sessionGroup = 20,
                                  .sessionProcesses = {{20, "b:200"}, {21, "b:210"}, {22, "b:220"}},
                                  .darkBefore = true};  // the session's own: gone with it
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
    keep(dead);
    recover(Environment{});
    EXPECT_EQ(journal.calls, std::vector<std::string>{"remove /tmp/zd-session.q"});
    // A session that had started no process yet: its folder goes all the same.
    journal.calls.clear();
    keep({.owner = {10, "b:100"}, .sessionFolder = "/tmp/zd-session.r", .darkBefore = true});
    recover(Environment{});
    EXPECT_EQ(journal.calls, std::vector<std::string>{"remove /tmp/zd-session.r"});
}

}  // namespace
}  // namespace zd
