// The frame of `zephyrdock`: help, exit codes, and what ends a command before any display.
#include <gtest/gtest.h>

#include "CliRunner.h"

namespace zd {
namespace {

TEST(CommandLine, HelpListsEveryCommandAndEachHasItsOwn) {
    test::CliRunner cli;
    auto help = cli.run({"--help"});
    EXPECT_EQ(help.exitCode, 0);
    for (const std::string command :
         {"targets", "spaces", "plan", "preview", "shoot", "settings"}) {
        EXPECT_NE(help.out.find("  " + command), std::string::npos) << command;
        auto own = cli.run({command, "--help"});
        EXPECT_EQ(own.exitCode, 0);
        EXPECT_NE(own.out.find("zephyrdock " + command), std::string::npos) << own.out;
    }
}

// Neither the user's display nor a private one (no Xvfb on the PATH): one line, exit 1.
TEST(CommandLine, NoWindowServerAndNoWayToStartOne) {
    test::CliRunner cli;
    const std::vector<std::string> bare{"PATH=/nonexistent", "HOME=" + cli.home.path().string()};
    for (auto arguments : {std::vector<std::string>{"targets"},
                           std::vector<std::string>{"shoot", "--target", "x", "--save-folder",
                                                    cli.home.path().string()}}) {
        auto result = cli.run(arguments, bare);
        EXPECT_EQ(result.exitCode, 1) << arguments[0];
        EXPECT_NE(result.err.find("no window server"), std::string::npos) << result.err;
        EXPECT_EQ(result.out, "");
    }
}

struct Message {
    std::vector<std::string> arguments;
    int exitCode;
    std::string said;
    bool absent = false;  // `said` must not be there
};

// What goes wrong is named in words of its own, with the path it concerns, before any display
// is started; flags are checked as a run checks them, for every command alike.
TEST(CommandLine, ProblemsAreNamedClearly) {
    test::CliRunner cli;
    const std::string home = cli.home.path().string();
    const std::string notAPicture = cli.home.file("config.txt", "not a picture");
    const std::string huge = cli.home.file(
        "huge.json", "{\"outputSize\": \"Custom\u2026\", \"customCanvasHeight\": 99999999999}");
    const std::string alpha = cli.home.file(
        "alpha.json",
        "{\"outputSize\": \"Custom\u2026\", \"lightBackgroundKind\": \"transparent\"}");
    const std::vector<Message> cases{
        {{}, 2, "A subcommand is required"},
        {{"--colour"}, 2, "A subcommand is required"},
        {{"plan", "--scope", "everything"}, 2, "everything not in {single,all}"},
        {{"shoot", "--target", "gedit"}, 1, "no save folder"},
        {{"--settings-file", "", "plan"}, 2, "needs the path of a file"},
        {{"--settings-file", home, "plan"}, 0, home + " is a folder, not a settings file"},
        {{"preview", "--out", home + "/p", "--background-image", home},
         0,
         home + " is a folder; the background falls back"},
        {{"preview", "--out", home + "/q", "--background-image", notAPicture},
         0,
         "can't be read as a picture"},
        {{"plan", "--languages", "x\x1b[2J"}, 0, "x\\x1b[2J-light"},
        {{"plan", "--languages", ""}, 0, "2 shots planned"},
        {{"plan", "--languages", "de", "none"}, 2, "contradicts"},
        {{"plan", "--canvas", "300x0"}, 0, "canvas 300 \u00d7 1\n"},
        {{"plan", "--canvas", "40000x100"}, 2, "at most 32767 pixels a side"},
        {{"--settings-file", huge, "plan"}, 2, "1920\u00d72147483647 is larger than can be drawn"},
        {{"--settings-file", alpha, "plan", "--appearances", "light"},
         0,
         "\nThe Mac App Store won't accept these pictures: the Light background is transparent "
         "and it refuses alpha; the canvas 1920 \u00d7 1200 isn't"},
        {{"--settings-file", alpha, "plan", "--store", "flathub"}, 0, "Mac App Store", true},
        {{"preview", "--out", home + "/r", "--canvas", "wide"}, 2, "neither WIDTHxHEIGHT"},
        {{"preview", "--out", home + "/r", "--background", "color", "--background-image",
          notAPicture},
         2,
         "contradicts"},
        {{"preview", "--out", home + "/r", "--background-color", "red"}, 2, "not a colour"},
    };
    for (const auto& c : cases) {
        auto result = cli.run(c.arguments);
        EXPECT_EQ(result.exitCode, c.exitCode) << c.said << ": " << result.err;
        EXPECT_EQ((result.err + result.out).find(c.said) == std::string::npos, c.absent)
            << c.said << ": " << result.err << result.out;
        EXPECT_EQ(result.out.find('\x1b'), std::string::npos) << c.said;
        EXPECT_EQ(result.err.find("display"), std::string::npos)
            << "nothing started: " << result.err;
    }
}

}  // namespace
}  // namespace zd
