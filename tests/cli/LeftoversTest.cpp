// Nothing of a run is left behind, however it ends: a run killed outright leaves no process of
// its private display (its helpers die with it) and the next start removes the rest and says
// so; a run on the user's desktop that was killed gets its appearance and language put back at
// the next start; a --launch'ed program that gives no window is ended, also on a stop; a
// display that dies during that wait is noticed at once; every terminating signal stops a run
// the way Ctrl-C does.
#include <gtest/gtest.h>
#include <signal.h>

#include <chrono>
#include <fstream>
#include <map>
#include <set>
#include <thread>

#include "CliRunner.h"
#include "linux/HeadlessSession.h"
#include "linux/LanguageOverrideStore.h"

namespace zd {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

bool waitFor(const std::function<bool()>& ready, std::chrono::milliseconds limit) {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (std::chrono::steady_clock::now() < end) {
        if (ready())
            return true;
        std::this_thread::sleep_for(50ms);
    }
    return ready();
}

// A run of the command line that goes on while the test looks at it.
struct Started {
    pid_t pid = 0;
    std::string errPath;
    std::string err() const { return test::CliRunner::read(errPath); }
    int wait() const {
        int status = 0;
        waitpid(pid, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }
};

Started start(const test::CliRunner& cli, std::vector<std::string> words,
              const std::vector<std::string>& environment) {
    words.insert(words.begin(),
                 {test::CliRunner::executable(), "--settings-file", cli.settingsPath()});
    std::vector<char*> argv = x11::spawnArray(words);
    std::vector<std::string> variables = environment;
    std::vector<char*> envp = x11::spawnArray(variables);
    Started started;
    started.errPath = (cli.home.path() / "started.err").string();
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 2, started.errPath.c_str(),
                                     O_WRONLY | O_CREAT | O_TRUNC, 0600);
    posix_spawn(&started.pid, argv[0], &actions, nullptr, argv.data(), envp.data());
    posix_spawn_file_actions_destroy(&actions);
    return started;
}

// Every process below `root`, by their parents in /proc.
std::set<pid_t> descendantsOf(pid_t root) {
    std::multimap<pid_t, pid_t> children;
    for (const auto& entry : fs::directory_iterator("/proc")) {
        const std::string name = entry.path().filename().string();
        if (name.find_first_not_of("0123456789") != std::string::npos)
            continue;
        const std::string stat = test::CliRunner::read((entry.path() / "stat").string());
        const auto close = stat.rfind(')');
        if (close == std::string::npos)
            continue;
        std::istringstream fields(stat.substr(close + 1));
        std::string state;
        pid_t parent = 0;
        fields >> state >> parent;
        children.emplace(parent, std::stoi(name));
    }
    std::set<pid_t> found;
    std::vector<pid_t> open{root};
    while (!open.empty()) {
        const pid_t next = open.back();
        open.pop_back();
        for (auto [it, end] = children.equal_range(next); it != end; ++it) {
            if (found.insert(it->second).second)
                open.push_back(it->second);
        }
    }
    return found;
}

bool running(pid_t pid) {
    const std::string stat = test::CliRunner::read("/proc/" + std::to_string(pid) + "/stat");
    const auto close = stat.rfind(')');
    return close != std::string::npos && stat.substr(close + 2, 1) != "Z";
}

std::vector<fs::path> journalRecords(const test::CliRunner& cli) {
    std::vector<fs::path> records;
    std::error_code ignored;
    for (const auto& entry :
         fs::directory_iterator(cli.home.path() / "state/zephyrdock/runs", ignored)) {
        if (entry.path().extension() == ".journal")
            records.push_back(entry.path());
    }
    return records;
}

TEST(Leftovers, ARunKilledOutrightLeavesNoProcessAndTheNextStartCleansUpAndSaysSo) {
    test::CliRunner cli;
    auto run = start(cli,
                     {"shoot", "--headless", "--launch", "sleep 300", "--languages", "none",
                      "--save-folder", cli.home.path().string()},
                     cli.inherited());
    ASSERT_TRUE(waitFor(
        [&] { return run.err().find("Waiting for the first window") != std::string::npos; }, 60s))
        << run.err();
    const auto records = journalRecords(cli);
    ASSERT_EQ(records.size(), 1u);
    const std::string record = test::CliRunner::read(records.front().string());
    const auto folderAt = record.find("session ");
    ASSERT_NE(folderAt, std::string::npos) << record;
    const fs::path sessionFolder =
        record.substr(folderAt + 8, record.find('\n', folderAt) - folderAt - 8);
    const auto left = descendantsOf(run.pid);
    ASSERT_GE(left.size(), 4u);  // the display, its bus, settings and window manager, sleep

    kill(run.pid, SIGKILL);
    run.wait();
    // The display's helpers go with their parent at once; the started program at the next
    // start.
    EXPECT_TRUE(waitFor(
        [&] {
            int alive = 0;
            for (pid_t pid : left)
                alive += running(pid) ? 1 : 0;
            return alive <= 1;
        },
        10s));
    EXPECT_TRUE(fs::exists(sessionFolder));

    auto next = cli.run({"--settings-file", cli.settingsPath(), "targets", "--headless"});
    EXPECT_EQ(next.exitCode, 0) << next.err;
    EXPECT_NE(next.err.find("An interrupted run left changes behind; put back: "),
              std::string::npos)
        << next.err;
    EXPECT_FALSE(fs::exists(sessionFolder));
    EXPECT_TRUE(journalRecords(cli).empty());
    for (pid_t pid : left) {
        EXPECT_FALSE(running(pid))
            << test::CliRunner::read("/proc/" + std::to_string(pid) + "/cmdline");
    }
}

TEST(Leftovers, ALaunchedProgramWithoutAWindowIsEndedOnAStopAndADeadDisplayIsNoticedAtOnce) {
    for (const bool killDisplay : {false, true}) {
        test::CliRunner cli;
        auto run = start(cli,
                         {"shoot", "--headless", "--launch", "sleep 300", "--languages", "none",
                          "--save-folder", cli.home.path().string()},
                         cli.inherited());
        ASSERT_TRUE(waitFor(
            [&] { return run.err().find("Waiting for the first window") != std::string::npos; },
            60s))
            << run.err();
        pid_t sleeper = 0, display = 0;
        for (pid_t pid : descendantsOf(run.pid)) {
            const auto command = test::CliRunner::read("/proc/" + std::to_string(pid) + "/cmdline");
            if (command.rfind("sleep", 0) == 0)
                sleeper = pid;
            if (command.rfind("Xvfb", 0) == 0)
                display = pid;
        }
        ASSERT_GT(sleeper, 0);
        ASSERT_GT(display, 0);
        const auto before = std::chrono::steady_clock::now();
        kill(killDisplay ? display : run.pid, killDisplay ? SIGKILL : SIGINT);
        const int exitCode = run.wait();
        EXPECT_LT(std::chrono::steady_clock::now() - before, 15s);
        EXPECT_EQ(exitCode, killDisplay ? 1 : 130) << run.err();
        if (killDisplay) {
            EXPECT_NE(run.err().find("the display stopped answering"), std::string::npos)
                << run.err();
        }
        EXPECT_FALSE(running(sleeper)) << run.err();
        EXPECT_TRUE(journalRecords(cli).empty());
    }
}

std::string runIn(const std::vector<std::string>& environment, std::vector<std::string> words) {
    test::TemporaryFolder folder;
    const auto out = (folder.path() / "out").string();
    std::vector<char*> argv = x11::spawnArray(words);
    std::vector<std::string> variables = environment;
    std::vector<char*> envp = x11::spawnArray(variables);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, out.c_str(), O_WRONLY | O_CREAT, 0600);
    pid_t pid = 0;
    posix_spawnp(&pid, argv[0], &actions, nullptr, argv.data(), envp.data());
    posix_spawn_file_actions_destroy(&actions);
    waitpid(pid, nullptr, 0);
    return test::CliRunner::read(out);
}

TEST(Leftovers, ARunKilledOnTheUsersDesktopGetsAppearanceAndLanguageBackAtTheNextStart) {
    auto session = x11::HeadlessSession::start();  // the user's desktop here
    ASSERT_TRUE(session) << session.error();
    const auto environment = (*session)->childEnvironment();
    const fs::path state = (*session)->directory() / "state/zephyrdock/runs";
    // The run as a kill left it: Dark on, German written for an application, its process gone.
    const pid_t gone = fork();
    if (gone == 0)
        _exit(0);
    waitpid(gone, nullptr, 0);
    fs::create_directories(state);
    std::ofstream(state / "run-dead.journal")
        << "zephyrdock run journal 1\nowner " << gone
        << " b:1\nappearance light\nlanguage org.example.Gone\n";
    runIn(environment,
          {"gsettings", "set", "org.gnome.desktop.interface", "color-scheme", "prefer-dark"});
    x11::LanguageOverrideStore overrides((*session)->directory() / "config/zephyrdock/overrides");
    overrides.runDefaults({"write", "org.example.Gone", "AppleLanguages", "-array", "de"});
    overrides.runDefaults({"write", "org.example.Gone", "AppleLocale", "-string", "de"});

    test::CliRunner cli;
    auto next = cli.run({"--settings-file", cli.settingsPath(), "targets"}, environment);
    EXPECT_EQ(next.exitCode, 0) << next.err;
    EXPECT_NE(next.err.find("put back: the appearance (Light again) and the language of "
                            "org.example.Gone."),
              std::string::npos)
        << next.err;
    EXPECT_EQ(
        runIn(environment, {"gsettings", "get", "org.gnome.desktop.interface", "color-scheme"}),
        "'default'\n");
    EXPECT_NE(overrides.runDefaults({"read", "org.example.Gone", "AppleLanguages"})->exitStatus, 0);
    EXPECT_FALSE(fs::exists(state / "run-dead.journal"));
}

// The gedit processes on `display`, by their environment.
std::vector<pid_t> geditsOn(const std::string& display) {
    std::vector<pid_t> found;
    for (const auto& entry : fs::directory_iterator("/proc")) {
        const std::string name = entry.path().filename().string();
        if (name.find_first_not_of("0123456789") != std::string::npos ||
            test::CliRunner::read((entry.path() / "comm").string()) != "gedit\n") {
            continue;
        }
        const std::string environ = test::CliRunner::read((entry.path() / "environ").string());
        if (environ.find(std::string("DISPLAY=") + display + '\0') != std::string::npos &&
            running(std::stoi(name))) {
            found.push_back(std::stoi(name));
        }
    }
    return found;
}

TEST(Leftovers, CtrlCWhileTheTargetIsPutBackWaitsTillItRunsAgain) {
    auto session = x11::HeadlessSession::start();  // the user's desktop here
    ASSERT_TRUE(session) << session.error();
    const auto environment = (*session)->childEnvironment();
    const std::string display = (*session)->display();
    test::CliRunner cli;
    runIn(environment, {"sh", "-c", "gedit >/dev/null 2>&1 &"});
    ASSERT_TRUE(waitFor(
        [&] {
            return cli.run({"--settings-file", cli.settingsPath(), "targets"}, environment)
                       .out.find("gedit") != std::string::npos;
        },
        60s));

    auto run = start(
        cli,
        {"shoot", "--target", "gedit", "--languages", "de", "--appearances", "light", "--countdown",
         "0", "--canvas", "320x200", "--save-folder", cli.home.path().string()},
        environment);
    const bool puttingBack = waitFor(
        [&] { return run.err().find("back in its own language") != std::string::npos; }, 120s);
    kill(run.pid, SIGINT);
    std::this_thread::sleep_for(100ms);
    kill(run.pid, SIGINT);
    const int exitCode = run.wait();
    const auto gedits = geditsOn(display);
    for (pid_t pid : gedits)
        kill(pid, SIGKILL);
    ASSERT_TRUE(puttingBack) << run.err();
    EXPECT_EQ(exitCode, 0) << run.err();
    EXPECT_NE(run.err().find("Still waiting for Gedit"), std::string::npos) << run.err();
    EXPECT_FALSE(gedits.empty()) << "the target was left closed: " << run.err();
}

}  // namespace
}  // namespace zd
