// Nothing of a run is left behind, however it ends, with real processes: a stop or a dead
// display while waiting for a --launch'ed program's window ends that program at once; a run
// killed outright loses its private display's helpers with it, and the next start ends the
// rest and says so. (What a killed or stopped run on the user's desktop leaves is
// LiveCommandsTest's.)
#include <gtest/gtest.h>

#include <signal.h>

#include <chrono>

#include "CliRunner.h"

namespace zd {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

using test::start;
using test::waitFor;

int runningOf(const std::map<pid_t, std::string>& processes) {
    return static_cast<int>(std::count_if(processes.begin(), processes.end(),
                                          [](const auto& p) { return test::running(p.first); }));
}

TEST(Leftovers, EveryWayARunWaitingForALaunchedWindowEndsLeavesNothingRunning) {
    enum class End { ctrlC, displayDies, killed };
    for (const End end : {End::ctrlC, End::displayDies, End::killed}) {
        test::CliRunner cli;
        const fs::path records = cli.home.path() / "state/zephyrdock/runs";
        auto run = start({test::CliRunner::executable(), "--settings-file", cli.settingsPath(),
                          "shoot", "--headless", "--launch", "sleep 300", "--languages", "none",
                          "--save-folder", cli.home.path().string()},
                         cli.inherited(), (cli.home.path() / "err").string());
        ASSERT_TRUE(
            waitFor([&] { return run.err().find("Waiting for") != std::string::npos; }, 60s))
            << run.err();
        // The display, its buses, settings and window manager, and sleep.
        const auto left = test::descendantsOf(run.pid);
        ASSERT_GE(left.size(), 5u);
        const pid_t display = test::displayAmong(left);

        const auto before = std::chrono::steady_clock::now();
        kill(end == End::displayDies ? display : run.pid, end == End::ctrlC ? SIGINT : SIGKILL);
        const int exitCode = run.wait();
        EXPECT_LT(std::chrono::steady_clock::now() - before, 15s);
        if (end == End::killed) {
            // Only the started program outlives the run; the next start ends it and says so.
            EXPECT_TRUE(waitFor([&] { return runningOf(left) == 1; }, 10s));
            EXPECT_EQ(std::distance(fs::directory_iterator(records), {}), 1);
            auto next = cli.run({"--settings-file", cli.settingsPath(), "targets", "--headless"});
            EXPECT_NE(next.err.find("An interrupted run left changes behind; put back: 1 leftover "
                                    "process ended and the private display's temporary folder "
                                    "removed."),
                      std::string::npos)
                << next.err;
        } else {
            EXPECT_EQ(exitCode, end == End::ctrlC ? 130 : 1) << run.err();
            if (end == End::displayDies) {
                EXPECT_NE(run.err().find("the display stopped answering"), std::string::npos);
            }
        }
        EXPECT_TRUE(waitFor([&] { return runningOf(left) == 0; }, 5s));
        EXPECT_TRUE(fs::is_empty(records));
    }
}

}  // namespace
}  // namespace zd
