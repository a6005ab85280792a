#include "linux/ProcProcessBackend.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <thread>

#include "linux/ToolRunner.h"
#include "support/TemporaryFolder.h"

namespace zd::x11 {
namespace {

using namespace std::chrono_literals;

// A desktop file naming a script of our own, so identity resolution is tested without
// touching the installed applications.
struct ProcBackendTest : ::testing::Test {
    zd::test::TemporaryFolder folder;
    std::filesystem::path script;
    std::vector<pid_t> started;

    void SetUp() override {
        script = folder.path() / "zd-probe-app";
        std::ofstream(script) << "#!/bin/sh\n"
                                 "echo \"$LC_ALL|$LANGUAGE|$*\" > \"$0.out\"\n"
                                 "[ \"$1\" = stubborn ] && trap '' TERM\n"
                                 "while :; do sleep 0.05; done\n";
        std::filesystem::permissions(script, std::filesystem::perms::owner_all);
        std::filesystem::create_directories(folder.path() / "applications");
        std::ofstream(folder.path() / "applications" / "org.example.Probe.desktop")
            << "[Desktop Entry]\nType=Application\nName=Probe\nName[de]=Sonde\nExec="
            << script.string() << " %U\nIcon=/nonexistent.png\n";
    }
    void TearDown() override {
        for (pid_t pid : started)
            kill(pid, SIGKILL);
    }
    // Processes of `display` only, when one is named.
    ProcProcessBackend backend(std::optional<std::string> display = std::nullopt) {
        ProcProcessBackend::Options options;
        options.dataDirs = {folder.path()};
        options.windowClasses = nullptr;  // no display needed
        if (display)
            options.display = *display;
        return ProcProcessBackend(options);
    }
    pid_t launch(ProcProcessBackend& b, std::vector<std::string> arguments = {},
                 std::vector<std::pair<std::string, std::string>> env = {}) {
        LaunchRequest request;
        request.location = *b.applicationLocation("org.example.Probe");
        request.arguments = std::move(arguments);
        request.environment = std::move(env);
        auto pid = b.launch(request);
        EXPECT_TRUE(pid) << (pid ? "" : pid.error());
        if (!pid)
            return 0;
        started.push_back(*pid);
        return *pid;
    }
    static bool eventually(const std::function<bool()>& ready) {
        for (int i = 0; i < 100 && !ready(); ++i)
            std::this_thread::sleep_for(30ms);
        return ready();
    }
};

TEST_F(ProcBackendTest, ReadsThisProcessFromProc) {
    auto b = backend();
    const auto self = b.runningApplication(getpid());
    ASSERT_TRUE(self);
    EXPECT_EQ(self->pid, getpid());
    EXPECT_EQ(b.currentProcessId(), getpid());
    EXPECT_FALSE(self->arguments.empty());
    EXPECT_FALSE(self->environment.empty());
    ASSERT_TRUE(self->launchDate);
    EXPECT_LT(std::chrono::system_clock::now() - *self->launchDate, std::chrono::minutes(30));
    EXPECT_FALSE(self->bundleIdentifier);  // no desktop file names the test program
    EXPECT_FALSE(b.runningApplication(0));
    EXPECT_FALSE(b.runningApplication(-5));
}

TEST_F(ProcBackendTest, LaunchesByIdentityWithTheLanguageFindsTheInstanceOrSaysWhyNot) {
    auto b = backend();
    EXPECT_EQ(b.applicationLocation("org.example.Probe"), script.string());
    EXPECT_FALSE(b.applicationLocation("org.example.Missing"));
    const pid_t pid =
        launch(b, {"--flag"},
               {{"LC_ALL", "de_DE.UTF-8"}, {"LANGUAGE", "de"}, {"QT_QPA_PLATFORMTHEME", "qt6ct"}});
    ASSERT_GT(pid, 0);
    ASSERT_TRUE(eventually([&] { return std::filesystem::exists(script.string() + ".out"); }));
    std::string line;
    std::getline(std::ifstream(script.string() + ".out"), line);
    EXPECT_EQ(line, "de_DE.UTF-8|de|--flag");

    const auto instances = b.runningApplications("org.example.Probe");
    ASSERT_EQ(instances.size(), 1u);
    EXPECT_EQ(instances[0].pid, pid);
    EXPECT_EQ(instances[0].bundleIdentifier, "org.example.Probe");
    EXPECT_EQ(instances[0].activationPolicy, ActivationPolicy::regular);
    EXPECT_FALSE(instances[0].icon);

    // Started again, it keeps the Qt theme it was seen with (the one that follows Dark).
    const pid_t again = launch(b);
    ASSERT_GT(again, 0);
    // Read once the new process has started the program, not while it is still a copy of ours.
    EXPECT_TRUE(eventually([&] {
        const auto relaunched = b.runningApplication(again);
        return relaunched &&
               std::find(relaunched->environment.begin(), relaunched->environment.end(),
                         "QT_QPA_PLATFORMTHEME=qt6ct") != relaunched->environment.end();
    }));
    EXPECT_TRUE(b.terminate(again));

    EXPECT_TRUE(b.terminate(pid));
    EXPECT_TRUE(eventually([&] { return !b.runningApplication(pid); }));
    EXPECT_TRUE(b.runningApplications("org.example.Probe").empty());

    // A program that can't be started says why.
    LaunchRequest missing;
    missing.location = (folder.path() / "missing-program").string();
    const auto result = b.launch(missing);
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error(), "No such file or directory");
}

TEST_F(ProcBackendTest, AProcessThatIgnoresTerminateEndsOnlyWhenForced) {
    auto b = backend();
    const pid_t pid = launch(b, {"stubborn"});
    ASSERT_TRUE(eventually([&] { return std::filesystem::exists(script.string() + ".out"); }));
    EXPECT_TRUE(b.terminate(pid));
    std::this_thread::sleep_for(300ms);
    EXPECT_TRUE(b.runningApplication(pid));
    EXPECT_TRUE(b.forceTerminate(pid));
    EXPECT_TRUE(eventually([&] { return !b.runningApplication(pid); }));
    EXPECT_FALSE(b.terminate(pid));
}

TEST_F(ProcBackendTest, OnlyProcessesOfTheChosenDisplayCount) {
    auto b = backend();
    const pid_t pid = launch(b, {}, {{"DISPLAY", ":4243"}});
    ASSERT_TRUE(eventually([&] { return b.runningApplication(pid).has_value(); }));
    EXPECT_FALSE(backend(":4242").runningApplication(pid));
    EXPECT_TRUE(backend(":4242").runningApplications("org.example.Probe").empty());
    EXPECT_TRUE(backend(":4243.0").runningApplication(pid));
}

TEST(DesktopEntries, ExecIsSplitByTheQuotingRulesWithoutFieldCodes) {
    EXPECT_EQ(DesktopEntries::splitExec("gedit %U"), (std::vector<std::string>{"gedit"}));
    EXPECT_EQ(DesktopEntries::splitExec(R"(env A=1 "/opt/My App/run" --x=%% %f)"),
              (std::vector<std::string>{"env", "A=1", "/opt/My App/run", "--x=%"}));
    EXPECT_EQ(DesktopEntries::splitExec(R"("say \"hi\"" x)"),
              (std::vector<std::string>{"say \"hi\"", "x"}));
}

}  // namespace
}  // namespace zd::x11
