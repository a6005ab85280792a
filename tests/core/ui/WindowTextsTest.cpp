// The texts and small values of the main window's controls.

#include "ui/WindowTexts.h"

#include <gtest/gtest.h>

namespace zd::WindowTexts {
namespace {

TEST(WindowTexts, TargetPickerLabelFallsBackToTheFirstItem) {
    const std::vector<CaptureTarget> targets{{3, "Notes", "", 1, std::nullopt, std::nullopt}};
    EXPECT_EQ(targetSelectionLabel(targets, 3, CaptureScope::singleWindow), "Notes");
    EXPECT_EQ(targetSelectionLabel(targets, 9, CaptureScope::singleWindow),
              "\u2014 pick a window \u2014");  // a window that has gone
    EXPECT_EQ(targetSelectionLabel(targets, std::nullopt, CaptureScope::allWindows),
              "\u2014 none (capture as-is) \u2014");
}

TEST(WindowTexts, CompositeButtonAndListHeight) {
    EXPECT_EQ(compositeWindowsButtonLabel({}), "No windows visible");
    EXPECT_EQ(compositeWindowsButtonLabel({{1, "A", "", true}}), "1 of 1 window");
    const std::vector<CompositeEntry> off(4, CompositeEntry{1, "A", "", false});
    EXPECT_EQ(compositeWindowsButtonLabel(off), "0 of 4 windows");
    EXPECT_EQ(compositeListHeight(1), 36.0);
    EXPECT_EQ(compositeListHeight(7), 252.0);
    EXPECT_EQ(compositeListHeight(8), 252.0);
}

TEST(WindowTexts, SpacePickerShowsADashUntilADesktopIsChosen) {
    const std::vector<Spaces::Info> spaces{{5, 1, false}, {6, 2, true}};
    EXPECT_EQ(spacePickerLabel(spaces, 0), "\u2014");
    EXPECT_EQ(spacePickerLabel(spaces, 6), "Desktop 2 (current)");
}

TEST(WindowTexts, LanguageMenuOffersWhatIsNotChosen) {
    const auto all = LanguageCatalog::common();
    auto offered = addableLanguages({{"xx", "xx"}, all[1]});
    ASSERT_EQ(offered.size(), all.size() - 1);
    EXPECT_EQ(offered[0].code, all[0].code);
    EXPECT_EQ(offered[1].code, all[2].code);
    EXPECT_TRUE(addableLanguages(all).empty());
    EXPECT_EQ(languageMenuItem({"de", "German"}), "German (de)");
}

TEST(WindowTexts, CountsAndLabels) {
    const std::vector<std::pair<std::string, std::string>> cases{
        {plannedOutputsText(1), "1 planned output"},
        {plannedOutputsText(0), "0 planned outputs"},
        {takeButtonText(1), "Take 1 shot"},
        {takeButtonText(4), "Take 4 shots"},
        {countdownLabel(5), "5s"},
        {countdownLabel(0), "Off"},
        {canvasSizeText({2880.0, 1800.0}), "2880 \u00d7 1800 pixels"},
        {backgroundKindWord(BackgroundKind::transparent), "Transparent"},
        {backgroundKindWord(BackgroundKind::color), "Color"},
        {backgroundKindWord(BackgroundKind::image), "Image"},
        {imageButtonTitle(std::nullopt), "Choose image\u2026"},
        {imageButtonTitle("/a/b/pic.png"), "pic.png"},
        {saveFolderButtonTitle(std::nullopt), "Choose save folder\u2026"},
        {saveFolderButtonTitle("/shots/run/"), "run"},
        {batterySymbol(12), "battery.0percent"},
        {batterySymbol(13), "battery.25percent"},
        {batterySymbol(38), "battery.50percent"},
        {batterySymbol(63), "battery.75percent"},
        {batterySymbol(88), "battery.100percent"}};
    for (const auto& [shown, expected] : cases)
        EXPECT_EQ(shown, expected);
}

TEST(WindowTexts, FirstLocalFileOfADrop) {
    using Drop = std::vector<std::string>;
    EXPECT_EQ(firstLocalFile({}), std::nullopt);
    EXPECT_EQ(firstLocalFile(Drop{"file:///a/b%20c.png", "file:///d.png"}), "/a/b c.png");
    EXPECT_EQ(firstLocalFile(Drop{"file://localhost/x.jpg"}), "/x.jpg");
    EXPECT_EQ(firstLocalFile(Drop{"file:///a%2Fb%2f%39"}), "/a/b/9");
    EXPECT_EQ(firstLocalFile(Drop{"https://h/x.png", "file:///d.png"}), std::nullopt);
    EXPECT_EQ(firstLocalFile(Drop{"file://host/x.png"}), std::nullopt);
    EXPECT_EQ(firstLocalFile(Drop{"file:///100%"}), "/100%");
}

}  // namespace
}  // namespace zd::WindowTexts
