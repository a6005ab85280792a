#include "control/AppearanceController.h"

#include <gtest/gtest.h>

#include <cctype>

#include "testing/FakeAppearanceBackend.h"

namespace zd {
namespace {

using AppearanceController::Mode;
using testing::FakeAppearanceBackend;

TEST(AppearanceController, ScriptsAreFiveLinesWithFourBlankIndentAndNoTrailingLineFeed) {
    EXPECT_EQ(AppearanceController::readingScript(),
              "tell application \"System Events\"\n    tell appearance preferences\n"
              "        return dark mode\n    end tell\nend tell");
    EXPECT_EQ(AppearanceController::writingScript(Mode::dark),
              "tell application \"System Events\"\n    tell appearance preferences\n"
              "        set dark mode to true\n    end tell\nend tell");
    EXPECT_NE(AppearanceController::writingScript(Mode::light).find("set dark mode to false\n"),
              std::string::npos);
}

struct ReadCase {
    std::optional<ToolResult> result;
    std::optional<Mode> mode;
};
void PrintTo(const ReadCase& c, std::ostream* os) {
    if (!c.result) {
        *os << "no tool";
        return;
    }
    *os << "status " << c.result->exitStatus << " ";
    for (char ch : c.result->standardOutput)
        *os << (std::isalnum(static_cast<unsigned char>(ch)) ? ch : '_');
}

class AppearanceRead : public ::testing::TestWithParam<ReadCase> {};

TEST_P(AppearanceRead, OutputDecidesTheMode) {
    FakeAppearanceBackend backend;
    backend.readResult = GetParam().result;
    EXPECT_EQ(AppearanceController::current(backend), GetParam().mode);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Outputs, AppearanceRead, ::testing::Values(
    ReadCase{ToolResult{0, "true\n"}, Mode::dark}, ReadCase{ToolResult{0, "TRUE"}, Mode::dark},
    ReadCase{ToolResult{0, "  False \r\n"}, Mode::light}, ReadCase{ToolResult{0,
             "'prefer-dark'\n"}, Mode::dark},
    ReadCase{ToolResult{0, "'default'\n"}, Mode::light}, ReadCase{ToolResult{0,
             "'prefer-light'\n"}, Mode::light},
    ReadCase{ToolResult{0, ""}, std::nullopt}, ReadCase{ToolResult{0, "yes"}, std::nullopt},
    ReadCase{ToolResult{1, "true"}, std::nullopt}, ReadCase{ToolResult{0, "true\xff"},
             std::nullopt},
    ReadCase{std::nullopt, std::nullopt}));
// clang-format on

TEST(AppearanceController, SetSucceedsOnAnyOutputAndFailsAsAutomationDeniedOtherwise) {
    FakeAppearanceBackend backend;
    backend.writeResult = ToolResult{0, ""};
    EXPECT_TRUE(AppearanceController::set(backend, Mode::dark));
    backend.writeResult = ToolResult{0, "whatever"};
    EXPECT_TRUE(AppearanceController::set(backend, Mode::light));
    // Setting the mode already in force still writes.
    EXPECT_TRUE(AppearanceController::set(backend, Mode::light));
    EXPECT_EQ(backend.calls,
              (std::vector<std::string>{"write dark", "write light", "write light"}));

    for (const auto& bad :
         {std::optional<ToolResult>{}, std::optional<ToolResult>{ToolResult{1, ""}},
          std::optional<ToolResult>{ToolResult{0, "\xc3"}}}) {
        backend.writeResult = bad;
        const auto result = AppearanceController::set(backend, Mode::dark);
        ASSERT_FALSE(result);
        EXPECT_EQ(result.error().kind, AppearanceController::Failure::Kind::automationDenied);
    }
}

}  // namespace
}  // namespace zd
