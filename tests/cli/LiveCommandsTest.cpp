// The live commands end to end on a private headless desktop with gedit open in it: targets,
// spaces, Ctrl-C, SIGHUP or SIGTERM during the countdown, and the bad inputs of a
// run (one of which stores its flags).
#include <gtest/gtest.h>
#include <signal.h>

#include <QGuiApplication>
#include <QImage>
#include <chrono>
#include <fstream>
#include <regex>

#include "CliRunner.h"
#include "common/FileSettingsStore.h"
#include "linux/HeadlessSession.h"

namespace zd {
namespace {

using namespace std::chrono_literals;

using test::waitFor;

class LiveCommands : public testing::Test {
  public:
    static void SetUpTestSuite() {
        auto started = x11::HeadlessSession::start();
        if (!started) {
            failure_ = started.error();
            return;
        }
        session_ = std::move(*started);
        gedit_ = test::start({"gedit"}, session_->childEnvironment(),
                             (session_->directory() / "gedit.log").string())
                     .pid;
    }
    static void TearDownTestSuite() {
        if (gedit_ > 0) {
            kill(gedit_, SIGKILL);
            waitpid(gedit_, nullptr, 0);
        }
        session_.reset();
    }

  protected:
    void SetUp() override {
        if (!session_)
            GTEST_SKIP() << "no headless session: " << failure_;
    }
    std::vector<std::string> environment() const { return session_->childEnvironment(); }
    test::CliResult run(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), {"--settings-file", cli.settingsPath()});
        return cli.run(arguments, environment());
    }
    std::vector<std::string> targetLines() const {
        std::vector<std::string> lines;
        waitFor(
            [&] {
                lines.clear();
                std::istringstream out(run({"targets"}).out);
                for (std::string line; std::getline(out, line);)
                    lines.push_back(line);
                return !lines.empty();
            },
            20s);
        return lines;
    }
    test::CliRunner cli;
    static inline std::unique_ptr<x11::HeadlessSession> session_;
    static inline std::string failure_;
    static inline pid_t gedit_ = 0;
};

TEST_F(LiveCommands, TargetsAndSpacesListWhatTheWindowPickersShow) {
    auto lines = targetLines();
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_TRUE(
        std::regex_match(lines[0], std::regex("[0-9]+ +gedit \u2014 .+", std::regex::icase)))
        << lines[0];

    auto rows = run({"targets", "--all-windows"});
    EXPECT_EQ(rows.exitCode, 0);
    EXPECT_NE(rows.out.find("gedit"), std::string::npos) << rows.out;

    auto spaces = run({"spaces"});
    EXPECT_EQ(spaces.exitCode, 0) << spaces.err;
    EXPECT_NE(spaces.out.find("Desktop 1 (current)"), std::string::npos) << spaces.out;
}

TEST_F(LiveCommands, AnyTerminatingSignalDuringTheCountdownStopsAsCtrlCDoes) {
    ASSERT_FALSE(targetLines().empty());
    const auto schemeBefore = test::colorScheme(environment());
    // Ctrl-C, the terminal closing, kill's default.
    for (const int signal : {SIGINT, SIGHUP, SIGTERM}) {
        const auto folder = cli.home.path() / "Stopped";
        const auto shoot = test::start(
            {test::CliRunner::executable(), "--settings-file", cli.settingsPath(), "shoot",
             "--target", "Untitled Document 1", "--languages", "none", "--countdown", "3600",
             "--canvas", "640x400", "--save-folder", folder.string()},
            environment(), (cli.home.path() / "shoot.err").string());
        ASSERT_GT(shoot.pid, 0);
        const bool counting =
            waitFor([&] { return shoot.err().find("[3") != std::string::npos; }, 30s);
        kill(shoot.pid, signal);
        const int exitCode = shoot.wait();
        const auto err = shoot.err();
        ASSERT_TRUE(counting) << err;
        EXPECT_EQ(exitCode, 130) << signal << err;
        EXPECT_NE(err.find("Stopped before capture started."), std::string::npos) << err;
        EXPECT_LT(err.size(), 2000u) << "the race-down is one line";
        EXPECT_FALSE(std::filesystem::exists(folder) && !std::filesystem::is_empty(folder));
        EXPECT_EQ(test::colorScheme(environment()), schemeBefore);
    }
}

struct BadShoot {
    std::vector<std::string> arguments;
    int exitCode;
    const char* message;
};

TEST_F(LiveCommands, BadInputGetsOneClearLineAndANonZeroExit) {
    ASSERT_FALSE(targetLines().empty());
    const std::string home = cli.home.path().string();
    // A stored repeat, to be switched off by the one run that stores its flags.
    FileSettingsStore(cli.settingsPath()).setObject(true, "countdownAfterRelaunch");
    const std::vector<BadShoot> cases{
        {{"--target", "no-such-window", "--save-folder", home}, 1, "no window matches"},
        // Stored although the run then fails.
        {{"--target", "Untitled Document 1", "--save-folder", "/proc/zd-cannot-write",
          "--save-settings", "--countdown-after-relaunch=false"},
         1,
         "(saving under /proc/zd-cannot-write)"},
        {{"--target", "gedit", "--launch", "gedit", "--save-folder", home}, 2, "excludes"},
    };
    for (const auto& bad : cases) {
        auto arguments = test::words(
            "shoot --languages none --appearances light --canvas 320x200 --countdown 0");
        arguments.insert(arguments.end(), bad.arguments.begin(), bad.arguments.end());
        auto result = run(arguments);
        EXPECT_EQ(result.exitCode, bad.exitCode) << bad.message << ": " << result.err;
        EXPECT_NE(result.err.find(bad.message), std::string::npos) << result.err;
    }
    const auto stored = test::read(cli.settingsPath());
    EXPECT_NE(stored.find("\"customCanvasWidth\": 320"), std::string::npos) << stored;
    EXPECT_NE(stored.find("\"captureDark\": false"), std::string::npos) << stored;
    EXPECT_NE(stored.find("\"countdownAfterRelaunch\": false"), std::string::npos) << stored;
}

// Two runs of all the windows of a program started on a private display: the first in a new
// folder named with its variant, with a contact sheet, shown in the file manager; the second,
// in a language, joins it and puts the program back in its own language before it ends.
TEST_F(LiveCommands, LaunchedWindowsRunsGroupAcrossRunsAndTheFolderIsShown) {
    const auto tools = cli.home.path() / "tools";
    const auto marker = cli.home.path() / "revealed.txt";
    std::filesystem::create_directories(tools);
    std::ofstream(tools / "xdg-open") << "#!/bin/sh\necho \"$1\" >> " << marker.string() << "\n";
    std::filesystem::permissions(tools / "xdg-open", std::filesystem::perms::owner_all);
    std::vector<std::string> variables;
    for (const auto& variable : environment())
        variables.push_back(variable.starts_with("PATH=")
                                ? "PATH=" + tools.string() + ":" + variable.substr(5)
                                : variable);
    const auto folder = cli.home.path() / "Grouped";
    auto shoot = [&](std::vector<std::string> more) {
        auto arguments = test::words(
            "shoot --headless --launch gedit --scope all --appearances "
            "dark --canvas 320x200 --countdown 0 --variant V");
        arguments.insert(arguments.begin(), {"--settings-file", cli.settingsPath()});
        arguments.insert(arguments.end(), {"--save-folder", folder.string()});
        arguments.insert(arguments.end(), more.begin(), more.end());
        return cli.run(arguments, variables);
    };
    const auto first = shoot({"--languages", "", "--reveal", "--contact-sheet"});
    ASSERT_EQ(first.exitCode, 0) << first.err;
    EXPECT_NE(first.err.find("Saved 1 shot to "), std::string::npos) << first.err;
    const std::filesystem::path root(first.out.substr(0, first.out.find('\n')));
    EXPECT_EQ(root.parent_path(), folder);
    EXPECT_NE(root.filename().string().find(" \u2014 V \u2014 "), std::string::npos) << root;
    EXPECT_EQ(QImage(QString::fromStdString((root / "dark.png").string())).size(), QSize(320, 200));
    EXPECT_TRUE(std::filesystem::exists(root / "index.html"));
    // Flags change this run only.
    EXPECT_FALSE(std::filesystem::exists(cli.settingsPath()));
    EXPECT_TRUE(waitFor([&] { return test::read(marker.string()) == root.string() + "\n"; }, 10s))
        << test::read(marker.string());

    const auto second = shoot({"--destination", "group", "--languages", "de"});
    ASSERT_EQ(second.exitCode, 0) << second.err;
    EXPECT_EQ(second.out, first.out);
    EXPECT_TRUE(std::filesystem::exists(root / "V-dark.png"));
    EXPECT_NE(second.err.find("back in its own language"), std::string::npos) << second.err;
}

}  // namespace
}  // namespace zd
