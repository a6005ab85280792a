#include "store/StoreRules.h"

#include <gtest/gtest.h>

namespace zd {
namespace {

using StoreRules::PictureFacts;

BackgroundChoice background(BackgroundKind kind, double alpha = 1.0) {
    BackgroundChoice choice;
    choice.kind = kind;
    choice.fillColor = Color::white(0.5, alpha);
    return choice;
}

struct WarningCase {
    std::optional<Size> canvas;
    std::set<AppearanceMode> appearances;
    BackgroundChoice dark;
    std::optional<std::string> expected;
};

class StoreRulesPlanWarning : public ::testing::TestWithParam<WarningCase> {};

TEST_P(StoreRulesPlanWarning, SaysWhatTheMacAppStoreRefusesInOneLine) {
    StoreRules::PlannedPictures planned;
    planned.canvas = GetParam().canvas;
    planned.appearances = GetParam().appearances;
    planned.lightBackground = background(BackgroundKind::image);
    planned.darkBackground = GetParam().dark;
    EXPECT_EQ(StoreRules::planWarning(planned), GetParam().expected);
    planned.store = Store::flathub;
    EXPECT_EQ(StoreRules::planWarning(planned), std::nullopt);
}

const std::set<AppearanceMode> both{AppearanceMode::light, AppearanceMode::dark};

const std::string refused =
    "The Mac App Store won't accept these pictures: the Dark background is ";

// clang-format off
INSTANTIATE_TEST_SUITE_P(Cases, StoreRulesPlanWarning, ::testing::Values(
    // Only the backgrounds of enabled appearances count; an unknown size isn't judged.
    WarningCase{std::nullopt, {AppearanceMode::light}, background(BackgroundKind::transparent),
                std::nullopt},
    WarningCase{Size{1920, 1200}, both, background(BackgroundKind::transparent),
                refused + "transparent and it refuses alpha; the canvas 1920 \u00d7 1200 isn't "
                          "1280 "
                "\u00d7 800, 1440 \u00d7 900, 2560 \u00d7 1600 or 2880 \u00d7 1800."},
    WarningCase{Size{1280, 800}, {AppearanceMode::dark}, background(BackgroundKind::color, 0.5),
                refused + "translucent and it refuses alpha."},
    WarningCase{Size{1280, 800}, {AppearanceMode::dark}, background(BackgroundKind::color),
                std::nullopt}));
// clang-format on

PictureFacts goodPicture(std::string path, std::string group) {
    return {.path = std::move(path),
            .group = std::move(group),
            .fileBytes = 3'000'000,
            .width = 2880,
            .height = 1800,
            .opaqueBounds = {2880, 1800}};
}

// The alpha channel, the sizes and the count per language are checked end to end by the
// command's test; here the rarer problems.
TEST(StoreRules, MacAppStoreCheckNamesEachProblemOfEachFile) {
    PictureFacts odd = goodPicture("fr/odd.png", "fr");
    odd.bitDepth = 16;
    odd.interlaced = true;
    odd.colourType = 3;
    odd.fileBytes = 12'340'000;
    PictureFacts broken = goodPicture("fr/broken.png", "fr");
    broken.unreadable = "not a PNG file";
    const auto report =
        StoreRules::check(Store::macAppStore, {goodPicture("fr/light.png", "fr"), odd, broken});
    EXPECT_FALSE(report.passed());
    ASSERT_EQ(report.files.size(), 3u);
    EXPECT_TRUE(report.files[0].problems.empty());
    EXPECT_EQ(report.files[1].problems,
              (std::vector<std::string>{"palette colours, not RGB", "16-bit samples", "interlaced",
                                        "12.3 MB, more than 10.0 MB"}));
    EXPECT_EQ(report.files[2].problems, std::vector<std::string>{"not a PNG file"});
}

TEST(StoreRules, FlathubCheckWantsTheWindowOnTransparencyWithinItsSize) {
    PictureFacts exported = goodPicture("de/light.png", "de");
    exported.width = 2152;
    exported.height = 1552;
    exported.opaqueBounds = {2000, 1400};
    exported.alphaChannel = exported.transparentPixels = true;
    exported.fileBytes = 400'000;
    PictureFacts canvas = goodPicture("de/dark.png", "de");
    const auto report = StoreRules::check(Store::flathub, {exported, canvas});
    EXPECT_TRUE(report.files[0].problems.empty());
    EXPECT_EQ(report.files[1].problems,
              (std::vector<std::string>{
                  "the window is 2880 \u00d7 1800 pixels, more than 1000 \u00d7 700 logical pixels",
                  "no transparent background around the window"}));
    EXPECT_FALSE(report.passed());
}

}  // namespace
}  // namespace zd
