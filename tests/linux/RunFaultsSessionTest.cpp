// Runs that meet a fault of the machine: the target's window closes during the countdown, or
// the display itself goes away. Each ends with one line of status, writes no file, and leaves
// the appearance as it found it.

#include <gtest/gtest.h>
#include <signal.h>

#include <cstdlib>
#include <filesystem>

#include "env/AppearanceBackend.h"
#include "support/RunHarness.h"
#include "support/SessionFixture.h"
#include "ui/ContentView.h"

namespace zd {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

bool isFileBelow(const fs::path& folder) {
    std::error_code error;
    for (auto it = fs::recursive_directory_iterator(folder, error);
         it != fs::recursive_directory_iterator(); ++it) {
        if (it->is_regular_file())
            return true;
    }
    return false;
}

class RunFaultsInSession : public testing::SessionTest {
  protected:
    // A run of gedit in both appearances whose countdown calls `fault` at its first second; it
    // must end with "Capture failed: …", no file written, the appearance as it was.
    void runWithFaultInCountdown(const std::function<void(pid_t gedit)>& fault) {
        setenv("LANG", "en_US.UTF-8", 1);
        unsetenv("LC_ALL");
        unsetenv("LANGUAGE");
        auto gedit = launchApp({"gedit"});
        ASSERT_TRUE(gedit);
        const fs::path folder = session().directory() / "run";
        auto harness = testing::RunHarness::create(
            (session().directory() / "settings.json").string(), folder.string());
        ASSERT_TRUE(harness);
        ContentView& view = harness->view();
        view.countdownSeconds = 2;
        view.outputSize = OutputSize::mas1280;
        ASSERT_TRUE(harness->selectTargetOf(gedit->pid()));
        const auto darkBefore = harness->env().appearance->readDarkMode();
        ASSERT_TRUE(darkBefore);
        bool struck = false;
        auto watching = view.progress.subscribe([&](CaptureProgressModel::Field field) {
            if (field == CaptureProgressModel::Field::countdownRemaining && !struck &&
                view.progress.countdownRemaining() == 2) {
                struck = true;
                fault(gedit->pid());
            }
        });
        ASSERT_TRUE(harness->takeShotsAndWait(120s));
        EXPECT_TRUE(struck);
        EXPECT_TRUE(view.progress.statusMessage().starts_with("Capture failed: "))
            << view.progress.statusMessage();
        EXPECT_FALSE(isFileBelow(folder));
        EXPECT_FALSE(view.isWorking);
        // The colour scheme lives on the session bus, which outlives the display.
        EXPECT_EQ(harness->env().appearance->readDarkMode()->standardOutput,
                  darkBefore->standardOutput);
    }
};

// The target first, on a desktop that goes on; then the display itself, which ends it.
TEST_F(RunFaultsInSession, TheTargetClosingOrTheDisplayGoingAwayEndsTheRunWithNothingWritten) {
    {
        SCOPED_TRACE("the target closes");
        runWithFaultInCountdown([](pid_t gedit) { kill(gedit, SIGKILL); });
    }
    SCOPED_TRACE("the display goes away");
    runWithFaultInCountdown([this](pid_t) {
        ASSERT_GT(session().displayServerPid(), 0);
        kill(session().displayServerPid(), SIGKILL);
    });
}

}  // namespace
}  // namespace zd
