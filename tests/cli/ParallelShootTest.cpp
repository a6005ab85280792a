// `shoot --headless --parallel 2` end to end with gedit: the run folder equals the one a run in
// one session makes, and a stop or a session that fails mid-run writes nothing and leaves no
// process of any session running.
#include <gtest/gtest.h>
#include <signal.h>

#include <QImage>
#include <chrono>
#include <regex>

#include "CliRunner.h"

namespace zd {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

using test::waitFor;

struct ParallelShoot : ::testing::Test {
    std::vector<std::string> shoot(const fs::path& saveFolder, int sessions,
                                   const std::string& countdown) const {
        auto arguments = test::words(
            "shoot --headless --launch gedit --languages de fr ja "
            "--canvas 720x450 --parallel " +
            std::to_string(sessions) + " --countdown " + countdown);
        arguments.insert(arguments.begin(), {"--settings-file", cli.settingsPath()});
        arguments.insert(arguments.end(), {"--save-folder", saveFolder.string()});
        return arguments;
    }
    // The PNG files of the only run folder under `saveFolder`, relative to it.
    static std::vector<fs::path> pictures(const fs::path& saveFolder, fs::path& runRoot) {
        std::vector<fs::path> found;
        for (const auto& run : fs::directory_iterator(saveFolder)) {
            runRoot = run.path();
            for (const auto& entry : fs::recursive_directory_iterator(run.path()))
                if (entry.is_regular_file())
                    found.push_back(fs::relative(entry.path(), run.path()));
        }
        std::sort(found.begin(), found.end());
        return found;
    }
    test::CliRunner cli;
};

TEST_F(ParallelShoot, ItsRunFolderEqualsTheOneOfARunInOneSession) {
    const fs::path one = cli.home.path() / "one";
    const fs::path two = cli.home.path() / "two";
    const auto sequential = cli.run(shoot(one, 1, "0"));
    ASSERT_EQ(sequential.exitCode, 0) << sequential.err;
    const auto parallel = cli.run(shoot(two, 2, "0"));
    ASSERT_EQ(parallel.exitCode, 0) << parallel.err;
    EXPECT_NE(parallel.err.find("[2/2] Switching gedit to Japanese (1/1)\u2026"), std::string::npos)
        << parallel.err;

    fs::path oneRoot;
    fs::path twoRoot;
    const auto names = pictures(one, oneRoot);
    ASSERT_EQ(names.size(), 6u);
    EXPECT_EQ(pictures(two, twoRoot), names);
    EXPECT_EQ(parallel.out, twoRoot.string() + "\n");
    EXPECT_TRUE(std::regex_match(twoRoot.filename().string(),
                                 std::regex("gedit \u2014 \\d{4}-\\d{2}-\\d{2}-\\d{6}")));
    // The same pictures, but for what moves on its own: the text cursor's blink.
    for (const auto& name : names) {
        const QImage a(QString::fromStdString((oneRoot / name).string()));
        const QImage b(QString::fromStdString((twoRoot / name).string()));
        ASSERT_EQ(a.size(), b.size()) << name;
        long differing = 0;
        for (int y = 0; y < a.height(); ++y)
            for (int x = 0; x < a.width(); ++x)
                differing += a.pixel(x, y) != b.pixel(x, y) ? 1 : 0;
        EXPECT_LT(differing, a.width() * a.height() / 1000) << name;
    }
}

TEST_F(ParallelShoot, IsRefusedOnTheUsersDisplay) {
    const auto refused = cli.run({"--settings-file", cli.settingsPath(), "shoot", "--parallel", "2",
                                  "--launch", "gedit", "--save-folder", cli.home.path().string()});
    EXPECT_EQ(refused.exitCode, 2);
    EXPECT_NE(refused.err.find("--parallel 2 needs --headless"), std::string::npos) << refused.err;
}

TEST_F(ParallelShoot, AStopOrAFailingSessionWritesNothingAndLeavesNoProcess) {
    enum class End { stop, sessionFails };
    for (const End end : {End::stop, End::sessionFails}) {
        const fs::path saveFolder = cli.home.path() / (end == End::stop ? "stop" : "fail");
        std::vector<std::string> words{test::CliRunner::executable()};
        for (const auto& word : shoot(saveFolder, 2, "3"))
            words.push_back(word);
        const auto run = test::start(words, cli.inherited(), (cli.home.path() / "err").string());
        ASSERT_GT(run.pid, 0);
        auto err = [&] { return run.err(); };

        // Both sessions count down to their first language's pictures.
        ASSERT_TRUE(waitFor(
            [&] {
                const std::string text = err();
                return std::regex_search(text, std::regex("\\[1/2\\][^\\n]*  \\[[0-9]\\]")) &&
                       std::regex_search(text, std::regex("\\[2/2\\][^\\n]*  \\[[0-9]\\]"));
            },
            120s))
            << err();
        const auto left = test::descendantsOf(run.pid);
        kill(end == End::stop ? run.pid : test::displayAmong(left),
             end == End::stop ? SIGINT : SIGKILL);  // or one session's display dies
        EXPECT_EQ(run.wait(), end == End::stop ? 130 : 1) << err();
        EXPECT_TRUE(std::regex_search(
            err(),
            std::regex(end == End::stop ? "\nStopped \u2014 [0-9]+ shots? captured but not saved.\n"
                                        : "\nCapture failed: the display stopped answering during "
                                          "the run.\n")))
            << err();
        EXPECT_TRUE(!fs::exists(saveFolder) || fs::is_empty(saveFolder));
        EXPECT_TRUE(waitFor(
            [&] {
                return std::none_of(left.begin(), left.end(),
                                    [](const auto& p) { return test::running(p.first); });
            },
            10s))
            << "left running after " << (end == End::stop ? "the stop" : "the failure");
    }
}

}  // namespace
}  // namespace zd
