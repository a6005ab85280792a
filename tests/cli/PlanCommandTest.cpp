// `zephyrdock plan`: the window's shot plan from the stored settings and the flags, checked as a
// run checks them. The plan's rules themselves are the core's (ShotPlanTest).
#include <gtest/gtest.h>

#include "CliRunner.h"
#include "common/FileSettingsStore.h"
#include "common/JsonValueCodec.h"

namespace zd {
namespace {

TEST(PlanCommand, ShowsCountCanvasAndLabelsAndWritesNothing) {
    test::CliRunner cli;
    FileSettingsStore store(cli.settingsPath());
    store.setObject(ValueArray{"ja"}, "languageCodes");
    store.setObject("1280 \u00d7 800", "outputSize");
    auto result = cli.run({"plan"});
    ASSERT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out,
              "2 shots planned (Single window), canvas 1280 \u00d7 800\n"
              "  ja-light            Japanese                  Light\n"
              "  ja-dark             Japanese                  Dark\n");
    EXPECT_EQ(store.allKeys().size(), 2u) << "planning writes nothing";

    result = cli.run({"plan", "--json", "--languages", "pt-BR", "--appearances", "dark"});
    auto document = JsonValueCodec::decode(result.out);
    ASSERT_TRUE(document.has_value()) << result.out << result.err;
    const auto& entries = *document->find("entries")->asArray();
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_EQ(*entries[0].find("id"), Value("pt-BR-dark"));
    EXPECT_EQ(document->find("plannedShotCount")->asInteger(), 1);
}

TEST(PlanCommand, FlagsAreCheckedAsTheRunChecksThem) {
    struct Case {
        std::vector<std::string> arguments;
        bool storeHugeHeight;
        int exitCode;
        std::string text;  // in stdout when it succeeds, else in stderr
    };
    const std::vector<Case> cases{
        {{"--languages", ""}, false, 0, "2 shots planned"},
        {{"--languages", "de", "none"}, false, 2, "contradicts"},
        {{"--canvas", "300x0"}, false, 0, "canvas 300 \u00d7 1\n"},
        {{"--canvas", "40000x100"}, false, 2, "at most 32767 pixels a side"},
        {{}, true, 2, "a canvas of 1920\u00d72147483647 is larger than can be drawn"},
    };
    for (const auto& c : cases) {
        test::CliRunner cli;
        if (c.storeHugeHeight) {
            FileSettingsStore store(cli.settingsPath());
            store.setObject("Custom\u2026", "outputSize");
            store.setObject(std::int64_t{99999999999}, "customCanvasHeight");
        }
        std::vector<std::string> arguments{"plan"};
        arguments.insert(arguments.end(), c.arguments.begin(), c.arguments.end());
        const auto result = cli.run(arguments);
        EXPECT_EQ(result.exitCode, c.exitCode) << c.text << ": " << result.err;
        EXPECT_NE((c.exitCode == 0 ? result.out : result.err).find(c.text), std::string::npos)
            << result.out << result.err;
    }
}

TEST(PlanCommandText, WarnsInOneLineWhereTheMacAppStoreWouldRefuse) {
    test::CliRunner cli;
    FileSettingsStore store(cli.settingsPath());
    store.setObject("Custom\u2026", "outputSize");
    store.setObject("transparent", "lightBackgroundKind");
    auto result = cli.run({"plan", "--appearances", "light"});
    ASSERT_EQ(result.exitCode, 0) << result.err;
    EXPECT_NE(result.out.find("\nThe Mac App Store won't accept these pictures: the Light "
                              "background is transparent and it refuses alpha; the canvas 1920 "
                              "\u00d7 1200 isn't"),
              std::string::npos)
        << result.out;
    result = cli.run({"plan", "--store", "flathub"});
    EXPECT_EQ(result.out.find("Mac App Store"), std::string::npos) << result.out;
}

}  // namespace
}  // namespace zd
