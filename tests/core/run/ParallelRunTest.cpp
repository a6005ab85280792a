#include "run/ParallelRun.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>

#include "run/RunOutput.h"
#include "support/TemporaryFolder.h"
#include "testing/FakeImageCodec.h"

namespace zd {
namespace {

namespace fs = std::filesystem;

std::vector<LanguageSelection> languages(const std::vector<std::string>& codes) {
    std::vector<LanguageSelection> list;
    for (const auto& code : codes)
        list.push_back({code, "Label of " + code});
    return list;
}

TEST(ParallelRun, SplitKeepsTheOrderAndBalancesByCount) {
    struct Case {
        int languages, sessions;
        std::vector<std::size_t> sizes;
    };
    for (const Case& c : std::vector<Case>{{6, 3, {2, 2, 2}},
                                           {7, 3, {3, 2, 2}},
                                           {5, 3, {2, 2, 1}},
                                           {2, 3, {1, 1}},
                                           {3, 0, {3}}}) {
        std::vector<std::string> codes;
        for (int i = 0; i < c.languages; ++i)
            codes.push_back("l" + std::to_string(i));
        const auto parts = ParallelRun::splitLanguages(languages(codes), c.sessions);
        std::vector<std::size_t> sizes;
        std::vector<LanguageSelection> joined;
        for (const auto& part : parts) {
            sizes.push_back(part.size());
            joined.insert(joined.end(), part.begin(), part.end());
        }
        EXPECT_EQ(sizes, c.sizes) << c.languages << " over " << c.sessions;
        EXPECT_EQ(joined, languages(codes));
    }
}

TEST(ParallelRun, DefaultSessionsFollowCoresLanguagesAndMemory) {
    constexpr std::uint64_t session = ParallelRun::kSessionMemoryBytes;
    EXPECT_EQ(ParallelRun::defaultSessionCount(6, 2, 100 * session), 3);    // cores + 1
    EXPECT_EQ(ParallelRun::defaultSessionCount(2, 8, 100 * session), 2);    // languages
    EXPECT_EQ(ParallelRun::defaultSessionCount(6, 8, 2 * session + 1), 2);  // memory
    EXPECT_EQ(ParallelRun::defaultSessionCount(6, 8, session / 2), 1);
    EXPECT_EQ(ParallelRun::defaultSessionCount(0, 0, 0), 1);
}

TEST(ParallelRun, StopTextCountsEverySessionsShots) {
    const std::string before = "Stopped before capture started.";
    EXPECT_EQ(ParallelRun::stopText({before, ""}, 0), before);
    EXPECT_EQ(ParallelRun::stopText({before, "Stopped \u2014 2 shots captured but not saved."}, 2),
              "Stopped \u2014 2 shots captured but not saved.");
    // A session stopped after a later countdown keeps "Stopping…": the run still counts.
    EXPECT_EQ(ParallelRun::stopText({"Stopping\u2026", before}, 3),
              "Stopped \u2014 3 shots captured but not saved.");
}

CapturedShot shot(const std::string& code, AppearanceMode mode, int tag) {
    CapturedShot s;
    s.languageCode = code;
    s.mode = mode;
    s.image = Image(tag, 1);  // the fake codec writes "PNG {tag} 1"
    return s;
}

std::map<std::string, std::string> filesUnder(const fs::path& root) {
    std::map<std::string, std::string> found;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        if (!entry.is_regular_file())
            continue;
        std::ifstream file(entry.path());
        found[fs::relative(entry.path(), root).string()] =
            std::string(std::istreambuf_iterator<char>(file), {});
    }
    return found;
}

// Sessions that saved their parts on their own, merged into a group that already holds
// pictures, give the folder one save of all the shots into that group gives: the same names,
// numbers and pictures. Duplicate codes, a code that needs sanitizing and one-appearance
// languages included.
TEST(ParallelRun, MergedSessionsEqualOneSaveOfAllShots) {
    const std::vector<std::vector<std::string>> parts{{"de", "a/b"}, {"de", "ja"}};
    const std::vector<AppearanceMode> both{AppearanceMode::light, AppearanceMode::dark};
    test::TemporaryFolder folder;
    FakeImageCodec codec;
    const auto compose = [](const CapturedShot& s) { return s.image; };
    const fs::path sequential = folder.path() / "sequential";
    const fs::path merged = folder.path() / "merged";
    for (const fs::path& root : {sequential, merged}) {
        ASSERT_TRUE(
            saveAll({shot("de", AppearanceMode::light, 99)}, root, "", "V", compose, codec));
    }

    std::vector<CapturedShot> all;
    std::vector<ParallelRun::StagedPicture> staged;
    int tag = 1;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        std::vector<CapturedShot> sessionShots;
        for (const auto& code : parts[i]) {
            for (AppearanceMode mode : both) {
                if (code == "ja" && mode == AppearanceMode::light)
                    continue;
                sessionShots.push_back(shot(code, mode, tag++));
            }
        }
        const fs::path root = folder.path() / ("session" + std::to_string(i));
        ASSERT_TRUE(saveAll(sessionShots, root, "", "", compose, codec));
        const auto pictures = ParallelRun::stagedPictures(root, languages(parts[i]));
        EXPECT_EQ(pictures.size(), sessionShots.size());
        staged.insert(staged.end(), pictures.begin(), pictures.end());
        all.insert(all.end(), sessionShots.begin(), sessionShots.end());
    }
    ASSERT_TRUE(saveAll(all, sequential, "", "V", compose, codec));
    auto written = ParallelRun::mergeInto(staged, merged, "V");
    ASSERT_TRUE(written);
    EXPECT_EQ(written->size(), all.size());
    EXPECT_EQ(filesUnder(merged), filesUnder(sequential));
    EXPECT_EQ(filesUnder(merged).count("de/V-light (3).png"), 1u);
}

TEST(ParallelRun, MergeStopsAtAFolderItCannotMake) {
    test::TemporaryFolder folder;
    const std::string staged = folder.file("staged/de/light.png");
    folder.file("root/de");  // a file where the language folder should go
    auto written = ParallelRun::mergeInto({{staged, "de", AppearanceMode::light, 1}},
                                          folder.path() / "root", "");
    EXPECT_FALSE(written);
    EXPECT_TRUE(fs::exists(staged));
}

}  // namespace
}  // namespace zd
