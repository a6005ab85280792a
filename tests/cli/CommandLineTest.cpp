// The frame of `zephyrdock`: help, exit codes, and the commands this build can't carry out.
#include <gtest/gtest.h>

#include "CliRunner.h"

namespace zd {
namespace {

TEST(CommandLine, HelpListsEveryCommand) {
    test::CliRunner cli;
    auto help = cli.run({"--help"});
    EXPECT_EQ(help.exitCode, 0);
    for (const char* command : {"targets", "spaces", "plan", "preview", "shoot", "settings"}) {
        EXPECT_NE(help.out.find(std::string("  ") + command), std::string::npos) << command;
    }
}

TEST(CommandLine, NoCommandOrUnknownOptionIsAUsageError) {
    test::CliRunner cli;
    for (auto arguments : {std::vector<std::string>{}, std::vector<std::string>{"--colour"},
                           std::vector<std::string>{"plan", "--scope", "everything"}}) {
        auto result = cli.run(arguments);
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_FALSE(result.err.empty());
    }
}

class UnavailableCommand : public testing::TestWithParam<std::string> {};

TEST_P(UnavailableCommand, SaysSoAndExits69) {
    test::CliRunner cli;
    auto result = cli.run({GetParam()});
    EXPECT_EQ(result.exitCode, 69);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "zephyrdock " + GetParam() + ": not yet available in this build\n");
    EXPECT_EQ(cli.run({GetParam(), "--help"}).exitCode, 0);
}

INSTANTIATE_TEST_SUITE_P(CommandLine, UnavailableCommand,
                         testing::Values("targets", "spaces", "preview", "shoot"));

}  // namespace
}  // namespace zd
