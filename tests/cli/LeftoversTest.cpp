// Nothing of a run is left behind, however it ends, with real processes: a stop or a dead
// display while waiting for a --launch'ed program's window ends that program at once; a run
// killed outright loses its private display's helpers with it, and the next start ends the
// rest and says so; a killed run on the user's desktop gets its appearance and language put
// back at the next start; a stop while the target is put back waits until it runs again.
#include <gtest/gtest.h>

#include <signal.h>
#include <iostream>

#include <chrono>
#include <fstream>

#include "CliRunner.h"
#include "linux/HeadlessSession.h"
#include "linux/LanguageOverrideStore.h"

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

// A private desktop that stands for the user's own.
struct UsersDesktop : ::testing::Test {
    void SetUp() override {
        auto started = x11::HeadlessSession::start();
        ASSERT_TRUE(started) << started.error();
        session = std::move(*started);
        environment = session->childEnvironment();
    }
    test::CliResult zephyrdock(const std::vector<std::string>& words) {
        std::vector<std::string> arguments{"--settings-file", cli.settingsPath()};
        arguments.insert(arguments.end(), words.begin(), words.end());
        return cli.run(arguments, environment);
    }
    std::unique_ptr<x11::HeadlessSession> session;
    std::vector<std::string> environment;
    test::CliRunner cli;
};

TEST_F(UsersDesktop, ARunKilledThereGetsAppearanceAndLanguageBackAtTheNextStart) {
    // As a kill left it: Dark on, German written for an application, its process gone.
    const pid_t gone = fork();
    if (gone == 0)
        _exit(0);
    waitpid(gone, nullptr, 0);
    const fs::path state = session->directory() / "state/zephyrdock/runs";
    fs::create_directories(state);
    std::ofstream(state / "run-dead.journal")
        << "zephyrdock run journal 1\nowner " << gone
        << " b:1\nappearance light\nlanguage org.example.Gone\n";
    test::outputOf(
        {"gsettings", "set", "org.gnome.desktop.interface", "color-scheme", "prefer-dark"},
        environment);
    x11::LanguageOverrideStore overrides(session->directory() / "config/zephyrdock/overrides");
    overrides.runDefaults({"write", "org.example.Gone", "AppleLanguages", "-array", "de"});

    auto next = zephyrdock({"targets"});
    EXPECT_NE(next.err.find("put back: the appearance (Light again) and the language of "
                            "org.example.Gone."),
              std::string::npos)
        << next.err;
    EXPECT_EQ(test::colorScheme(environment), "'default'\n");
    EXPECT_NE(overrides.runDefaults({"read", "org.example.Gone", "AppleLanguages"})->exitStatus, 0);
    EXPECT_TRUE(fs::is_empty(state));
}

TEST_F(UsersDesktop, CtrlCWhileTheTargetIsPutBackWaitsTillItRunsAgain) {
    test::outputOf({"sh", "-c", "gedit >/dev/null 2>&1 &"}, environment);
    auto geditShows = [&] {
        return zephyrdock({"targets"}).out.find("gedit") != std::string::npos;
    };
    ASSERT_TRUE(waitFor(geditShows, 60s));
    auto run =
        start({test::CliRunner::executable(), "--settings-file", cli.settingsPath(), "shoot",
               "--target", "gedit", "--languages", "de", "--appearances", "light", "--countdown",
               "0", "--canvas", "320x200", "--save-folder", cli.home.path().string()},
              environment, (cli.home.path() / "err").string());
    ASSERT_TRUE(waitFor(
        [&] { return run.err().find("back in its own language") != std::string::npos; }, 120s))
        << run.err();
    kill(run.pid, SIGINT);
    EXPECT_EQ(run.wait(), 0) << run.err();
    // The stop lands during the revert or just after it; either way the target runs again in
    // its own language, and a stop during the revert says what it waits for.
    if (run.err().find("Still waiting for") == std::string::npos)
        std::cerr << "(the stop came after the revert had ended)\n";
    EXPECT_TRUE(waitFor(geditShows, 30s)) << "the target was left closed: " << run.err();
}

}  // namespace
}  // namespace zd
