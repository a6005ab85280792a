#include "run/RunOutput.h"

#include <gtest/gtest.h>

#include <fstream>

#include "support/TemporaryFolder.h"
#include "testing/FakeImageCodec.h"

namespace zd {
namespace {

namespace fs = std::filesystem;

const std::string stamp = "2026-03-09-141502";
const std::string dash = " \u2014 ";

CapturedShot shot(std::string code, AppearanceMode mode) {
    CapturedShot s;
    s.id = makeUUID();
    s.languageLabel = code.empty() ? "Current" : "Label of " + code;
    s.languageCode = std::move(code);
    s.mode = mode;
    s.image = Image(4, 3);
    return s;
}

std::vector<CapturedShot> notesShots() {
    return {shot("de", AppearanceMode::light), shot("de", AppearanceMode::dark),
            shot("pt-BR", AppearanceMode::light), shot("pt-BR", AppearanceMode::dark)};
}

class RunOutputTest : public ::testing::Test {
  protected:
    // One run as the run driver does it: name, destination, save.
    fs::path run(const std::vector<CapturedShot>& shots, DestinationMode mode,
                 const std::string& variant) {
        const std::string name = runFolderName(applicationWord("Notes"), variant, stamp);
        const Destination destination =
            resolveDestination(mode, lastRunRoot, saveFolder, name, variant);
        auto saved = saveAll(
            shots, destination.runRoot, stamp, destination.variantPrefix,
            [&](const CapturedShot& s) {
                composed.push_back(saveEntryId(s));
                return s.image;
            },
            codec);
        EXPECT_TRUE(saved);
        lastRunRoot = destination.runRoot;
        return destination.runRoot;
    }

    // Every file under the save folder, relative to it.
    std::vector<std::string> files() const {
        std::vector<std::string> found;
        for (const auto& entry : fs::recursive_directory_iterator(saveFolder)) {
            if (entry.is_regular_file())
                found.push_back(fs::relative(entry.path(), saveFolder));
        }
        std::sort(found.begin(), found.end());
        return found;
    }

    test::TemporaryFolder folder;
    fs::path saveFolder = folder.path();
    std::optional<fs::path> lastRunRoot;
    FakeImageCodec codec;
    std::vector<std::string> composed;
};

TEST_F(RunOutputTest, NewRunWithoutVariantWritesOneFolderPerLanguage) {
    run(notesShots(), DestinationMode::newDestination, "");
    const std::string root = "Notes" + dash + stamp + "/";
    EXPECT_EQ(files(),
              (std::vector<std::string>{root + "de/dark.png", root + "de/light.png",
                                        root + "pt-BR/dark.png", root + "pt-BR/light.png"}));
    EXPECT_EQ(composed,
              (std::vector<std::string>{"de-light", "de-dark", "pt-BR-light", "pt-BR-dark"}));
    std::ifstream in(saveFolder / (root + "de/light.png"));
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(in), {}), "PNG 4 3");
}

TEST_F(RunOutputTest, GroupedRunsShareTheFolderAndNumberPerStem) {
    const fs::path first = run(notesShots(), DestinationMode::newDestination, "Sidebar");
    EXPECT_EQ(first, saveFolder / ("Notes" + dash + "Sidebar" + dash + stamp));
    EXPECT_TRUE(fs::exists(first / "de" / "light.png"));

    run(notesShots(), DestinationMode::group, "Sidebar");
    run(notesShots(), DestinationMode::group, "Sidebar");
    run({shot("de", AppearanceMode::light)}, DestinationMode::group, "  ");
    run({shot("de", AppearanceMode::light)}, DestinationMode::group, "");
    EXPECT_TRUE(fs::exists(first / "de" / "Sidebar-light.png"));
    EXPECT_TRUE(fs::exists(first / "de" / "Sidebar-light (2).png"));
    EXPECT_TRUE(fs::exists(first / "pt-BR" / "Sidebar-dark (2).png"));
    EXPECT_TRUE(fs::exists(first / "de" / "light (2).png"));
    EXPECT_TRUE(fs::exists(first / "de" / "light (3).png"));
    EXPECT_EQ(files().size(), 4u * 3 + 2);

    // A new destination after grouping: a fresh folder, the variant in its name only.
    lastRunRoot = saveFolder / "elsewhere";
    const fs::path fresh =
        run({shot("", AppearanceMode::dark)}, DestinationMode::newDestination, "V2");
    EXPECT_EQ(fresh, saveFolder / ("Notes" + dash + "V2" + dash + stamp));
    EXPECT_TRUE(fs::exists(fresh / "dark.png"));
}

TEST_F(RunOutputTest, GroupWithoutAPreviousRunMakesAFolderNamedWithTheVariant) {
    const fs::path root = run({shot("", AppearanceMode::dark)}, DestinationMode::group, "a/b");
    EXPECT_EQ(root, saveFolder / ("Notes" + dash + "a_b" + dash + stamp));
    EXPECT_TRUE(fs::exists(root / "a_b-dark.png"));
    EXPECT_EQ(composed, std::vector<std::string>{"-dark"});
}

TEST_F(RunOutputTest, NewestRunFolderOfTheApplicationWhateverItsVariant) {
    for (const std::string& name :
         {"Notes" + dash + "2026-03-09-141502", "Notes" + dash + "V" + dash + "2026-03-10-090000",
          "Notes" + dash + "V2026-12-01-000000", "Notes2" + dash + "2026-12-01-000000",
          "Mail" + dash + "2027-01-01-000000", "Notes" + dash + "2026-13-xx-000000"})
        fs::create_directories(saveFolder / name);
    std::ofstream(saveFolder / ("Notes" + dash + "2027-01-01-000000")) << "a file";
    EXPECT_EQ(newestRunFolder(saveFolder, "Notes"),
              saveFolder / ("Notes" + dash + "V" + dash + "2026-03-10-090000"));
    EXPECT_FALSE(newestRunFolder(saveFolder, "Pad"));
    EXPECT_FALSE(newestRunFolder(saveFolder / "gone", "Notes"));
}

TEST_F(RunOutputTest, LanguageCodesNeverLeaveTheRunFolder) {
    const fs::path root =
        run({shot("..", AppearanceMode::light), shot(".", AppearanceMode::light),
             shot("../../x", AppearanceMode::dark), shot("zh/Hant", AppearanceMode::dark)},
            DestinationMode::newDestination, "");
    for (const std::string& file : files()) {
        EXPECT_TRUE(file.starts_with("Notes" + dash + stamp + "/")) << file;
        EXPECT_EQ(file.find("/../"), std::string::npos) << file;
    }
    EXPECT_TRUE(fs::exists(root / "__" / "light.png"));
    EXPECT_TRUE(fs::exists(root / "_" / "light.png"));
    EXPECT_TRUE(fs::exists(root / ".._.._x" / "dark.png"));
    EXPECT_TRUE(fs::exists(root / "zh_Hant" / "dark.png"));
    EXPECT_EQ(composed[3], "zh/Hant-dark");  // the entry keeps the code as it is
}

TEST_F(RunOutputTest, FirstFailureStopsAndKeepsWhatWasWritten) {
    const auto asIs = [](const CapturedShot& s) { return s.image; };
    folder.file("root/pt-BR", "a file where a folder should be");
    const auto result = saveAll(notesShots(), saveFolder / "root", stamp, "", asIs, codec);
    ASSERT_FALSE(result);
    EXPECT_FALSE(result.error().localizedDescription.empty());
    EXPECT_TRUE(fs::exists(saveFolder / "root" / "de" / "dark.png"));
    EXPECT_FALSE(fs::exists(saveFolder / "root" / "pt-BR" / "dark.png"));

    codec.failEncoding = true;
    const auto encoding = saveAll(notesShots(), saveFolder / "other", stamp, "", asIs, codec);
    ASSERT_FALSE(encoding);
    EXPECT_EQ(encoding.error(), OutputError::couldNotEncodePNG());
    EXPECT_FALSE(fs::exists(saveFolder / "other" / "de" / "light.png"));  // stopped at the first
    EXPECT_FALSE(fs::exists(saveFolder / "other" / "pt-BR"));
}

TEST_F(RunOutputTest, UniquePathTakesTheFirstFreeNumber) {
    auto touch = [&](const std::string& name) { folder.file(name); };
    EXPECT_EQ(*uniquePath(saveFolder / "new" / "deep", "light", "png"),
              saveFolder / "new" / "deep" / "light.png");
    EXPECT_TRUE(fs::is_directory(saveFolder / "new" / "deep"));

    touch("new/light (2).png");
    EXPECT_EQ(*uniquePath(saveFolder / "new", "light", "png"), saveFolder / "new" / "light.png");
    touch("light.png");
    touch("light (3).png");
    EXPECT_EQ(*uniquePath(saveFolder, "light", "png"), saveFolder / "light (2).png");
    touch("dark.png");
    EXPECT_EQ(*uniquePath(saveFolder, "dark", "png"), saveFolder / "dark (2).png");
    fs::create_symlink(saveFolder / "nowhere", saveFolder / "x.png");  // dangling: still taken
    EXPECT_EQ(*uniquePath(saveFolder, "x", "png"), saveFolder / "x (2).png");
}

TEST(Sanitize, ReplacesEachBadCharacterAndTrimsBlanks) {
    const std::vector<std::pair<std::string, std::string>> table{
        {"Foo: Bar", "Foo_ Bar"},
        {"a/b", "a_b"},
        {"a//b", "a__b"},
        {R"(/\:?*<>|")", "_________"},
        {"  Mail \t", "Mail"},
        {"\u00a0Notes\u3000", "Notes"},  // Unicode blanks trim too
        {"   ", ""},
        {"line\n", "line\n"},  // line ends stay
        {"Ünïcödé.Name v2", "Ünïcödé.Name v2"},
        {"日本語", "日本語"},
    };
    for (const auto& [input, expected] : table)
        EXPECT_EQ(sanitize(input), expected) << input;
    EXPECT_EQ(trimmedWhitespaceAndNewlines("\n Sidebar \r\n"), "Sidebar");
}

TEST(RunFolderName, ApplicationWordVariantAndStamp) {
    EXPECT_EQ(runFolderName(applicationWord("Notes"), "", stamp), "Notes" + dash + stamp);
    EXPECT_EQ(runFolderName(applicationWord(""), " ", stamp), "Zephyrdock" + dash + stamp);
    EXPECT_EQ(runFolderName(applicationWord("   "), "x", stamp), dash + "x" + dash + stamp);
    EXPECT_EQ(runFolderName(applicationWord("Foo: Bar"), " a/b ", stamp),
              "Foo_ Bar" + dash + "a_b" + dash + stamp);
}

TEST(StampString, LocalTimeInTheFixedForm) {
    std::tm local{
        .tm_sec = 2, .tm_min = 15, .tm_hour = 14, .tm_mday = 9, .tm_mon = 2, .tm_year = 126};
    local.tm_isdst = -1;
    const auto time = std::chrono::system_clock::from_time_t(std::mktime(&local));
    EXPECT_EQ(stampString(time), "2026-03-09-141502");
    EXPECT_EQ(stampString(time + std::chrono::milliseconds(999)), "2026-03-09-141502");
}

}  // namespace
}  // namespace zd
