// `zephyrdock preview`: placeholder tiles in the order of the plan with a contact sheet, and
// the fallbacks for a missing background picture and a canvas of no size.
#include <gtest/gtest.h>

#include <QImage>
#include <fstream>

#include "CliRunner.h"

namespace zd {
namespace {

TEST(PreviewCommand, WritesOneTilePerPlannedPictureAndAContactSheetInPlanOrder) {
    test::CliRunner cli;
    const auto folder = cli.home.path() / "preview";
    auto result = cli.run({"preview", "--out", folder.string(), "--languages", "de", "ja",
                           "--appearances", "light", "dark"});
    ASSERT_EQ(result.exitCode, 0) << result.err;
    const std::vector<std::string> ids{"de-light", "de-dark", "ja-light", "ja-dark"};
    const auto sheet = test::read((folder / "index.html").string());
    std::size_t previous = 0;
    for (const auto& id : ids) {
        QImage tile(QString::fromStdString((folder / (id + ".png")).string()));
        ASSERT_FALSE(tile.isNull()) << id;
        EXPECT_EQ(tile.size(), QSize(720, 450)) << id;  // 2880 × 1800 scaled to 720
        const auto at = sheet.find(id + ".png");
        ASSERT_NE(at, std::string::npos) << id;
        EXPECT_GT(at, previous) << id;
        previous = at;
    }
    EXPECT_NE(sheet.find("German (de) \u2014 light"), std::string::npos);
    EXPECT_NE(QImage(QString::fromStdString((folder / "de-light.png").string())),
              QImage(QString::fromStdString((folder / "de-dark.png").string())));
}

TEST(PreviewCommand, StaysInsideItsFolderOverwritesNothingAndLeavesNoEmptyFile) {
    test::CliRunner cli;
    const auto folder = cli.home.path() / "a/b/preview";
    std::filesystem::create_directories(folder);
    std::ofstream(cli.home.path() / "a/victim-light.png") << "precious";
    std::ofstream(folder / "de-light.png") << "earlier";
    std::ofstream(folder / "index.html") << "mine";
    auto result = cli.run({"preview", "--out", folder.string(), "--languages", "../../victim", "de",
                           "--appearances", "light"});
    ASSERT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(test::read((cli.home.path() / "a/victim-light.png").string()), "precious");
    EXPECT_EQ(test::read((folder / "de-light.png").string()), "earlier");
    EXPECT_EQ(test::read((folder / "index.html").string()), "mine");
    for (const char* made : {".._.._victim-light.png", "de-light (2).png", "index (2).html"})
        EXPECT_TRUE(std::filesystem::is_regular_file(folder / made)) << made << result.err;

    const auto flat = cli.home.path() / "flat";
    result = cli.run({"preview", "--out", flat.string(), "--canvas", "2000x1"});
    EXPECT_EQ(result.exitCode, 1) << result.err;
    EXPECT_NE(result.err.find("cannot encode"), std::string::npos) << result.err;
    EXPECT_TRUE(std::filesystem::is_empty(flat));
}

// A missing background picture and a canvas of no size fall back with a warning; the tile shows
// what was drawn instead. (Refused values are CommandLineTest's rows.)
TEST(PreviewCommand, BadValuesFallBackWithAWarning) {
    for (const auto& [flag, value, message, tile] :
         {std::tuple{"--background-image", "/no/such/picture.png", "falls back", QSize(720, 450)},
          std::tuple{"--canvas", "0x-5", "raised to 1\u00d71", QSize(1, 1)}}) {
        test::CliRunner cli;
        const auto folder = cli.home.path() / "tiles";
        const auto result =
            cli.run({"preview", "--out", folder.string(), "--appearances", "light", flag, value});
        EXPECT_EQ(result.exitCode, 0) << message << result.err;
        EXPECT_NE(result.err.find(message), std::string::npos) << result.err;
        EXPECT_EQ(QImage(QString::fromStdString((folder / "current-light.png").string())).size(),
                  tile)
            << message;
    }
}

}  // namespace
}  // namespace zd
