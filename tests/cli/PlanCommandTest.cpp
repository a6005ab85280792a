// `zephyrdock plan`: how the plan is printed, as text and as JSON; its flags' problems are
// CommandLineTest's rows, the plan's rules the core's (ShotPlanTest).
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

}  // namespace
}  // namespace zd
