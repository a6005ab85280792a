// The contact sheet of a run: pictures in the run's order, labelled, linked safely.
#include "ContactSheet.h"

#include <gtest/gtest.h>

#include <fstream>

#include "CliRunner.h"

namespace zd::cli {
namespace {

TEST(ContactSheet, ListsARunsPicturesInRunOrderWithTheirLanguages) {
    test::TemporaryFolder folder;
    for (const char* file :
         {"ja/light.png", "de/dark.png", "de/light.png", "other/v dark.png", "de/notes.txt"}) {
        std::filesystem::create_directories((folder.path() / file).parent_path());
        std::ofstream(folder.path() / file) << "x";
    }
    const auto pictures = runPictures(folder.path(), {{"de", "German"}, {"ja", "Japanese"}});
    std::vector<std::string> files;
    for (const auto& picture : pictures)
        files.push_back(picture.file);
    EXPECT_EQ(files, (std::vector<std::string>{"de/light.png", "de/dark.png", "ja/light.png",
                                               "other/v dark.png"}));
    EXPECT_EQ(pictures.front().label, "German (de) \u2014 light");

    ASSERT_TRUE(writeContactSheet(folder.path(), "Notes <run>", pictures));
    const auto sheet = test::read((folder.path() / "index.html").string());
    EXPECT_NE(sheet.find("<title>Notes &lt;run&gt;</title>"), std::string::npos);
    EXPECT_NE(sheet.find("src=\"other/v%20dark.png\""), std::string::npos);
    EXPECT_LT(sheet.find("de/light.png"), sheet.find("de/dark.png"));
}

}  // namespace
}  // namespace zd::cli
