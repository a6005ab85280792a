// `zephyrdock plan`: the window's shot plan from the stored settings, as text and as JSON.
#include <gtest/gtest.h>

#include "CliRunner.h"
#include "linux/FileSettingsStore.h"
#include "linux/JsonValueCodec.h"

namespace zd {
namespace {

struct PlanCase {
    const char* name;
    std::map<std::string, Value> stored;
    std::vector<std::string> options;
    std::vector<std::string> ids;
    int count;
};

class PlanCommand : public testing::TestWithParam<PlanCase> {};

TEST_P(PlanCommand, ListsTheWindowsPlan) {
    const auto& c = GetParam();
    test::CliRunner cli;
    FileSettingsStore store(cli.settingsPath());
    for (const auto& [key, value] : c.stored)
        store.setObject(value, key);

    std::vector<std::string> arguments{"plan", "--json"};
    arguments.insert(arguments.end(), c.options.begin(), c.options.end());
    auto result = cli.run(arguments);
    ASSERT_EQ(result.exitCode, 0) << result.err;
    auto document = JsonValueCodec::decode(result.out);
    ASSERT_TRUE(document.has_value()) << result.out;
    std::vector<std::string> ids;
    for (const auto& entry : *document->find("entries")->asArray()) {
        ids.push_back(*entry.find("id")->asString());
    }
    EXPECT_EQ(ids, c.ids);
    EXPECT_EQ(document->find("plannedShotCount")->asInteger(), c.count);
}

INSTANTIATE_TEST_SUITE_P(
    CommandLine, PlanCommand,
    testing::Values(PlanCase{"LanguagesOutermost",
                             {{"languageCodes", ValueArray{"de", "fr"}}},
                             {},
                             {"de-light", "de-dark", "fr-light", "fr-dark"},
                             4},
                    PlanCase{"AllWindowsIgnoresLanguages",
                             {{"languageCodes", ValueArray{"de", "fr"}}, {"captureScope", "all"}},
                             {},
                             {"current-light", "current-dark"},
                             2},
                    PlanCase{"OnlyDarkStored", {{"captureLight", false}}, {}, {"current-dark"}, 1},
                    PlanCase{"OptionsOverrideTheStore",
                             {{"languageCodes", ValueArray{"de"}}},
                             {"--languages", "pt-BR", "--appearances", "dark"},
                             {"pt-BR-dark"},
                             1}),
    [](const auto& caseInfo) { return std::string(caseInfo.param.name); });

TEST(PlanCommandText, ShowsCountCanvasAndLabels) {
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
