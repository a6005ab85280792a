// How the command line names targets and desktops, and which target a word on it means.
#include "TargetText.h"

#include <gtest/gtest.h>

namespace zd::cli {
namespace {

CaptureTarget window(std::uint32_t id, std::string app, std::string title) {
    CaptureTarget target;
    target.id = id;
    target.appName = std::move(app);
    target.title = std::move(title);
    return target;
}

struct TextCase {
    std::string app;
    std::string title;
    std::string expected;
};

TEST(TargetText, NameAndTitleAreCutAt70CharactersAndDesktopsNamedByOrdinal) {
    const std::string e(60, 'e');
    const std::vector<TextCase> cases{
        {"Notes", "", "Notes"},
        {"Notes", "Today", "Notes \u2014 Today"},
        // 5 + 3 + 62 = 70 characters stay whole; 71 are cut to 69 and "…".
        {"Notes", e + "ab", "Notes \u2014 " + e + "ab"},
        {"Notes", e + "abc", "Notes \u2014 " + e + "a\u2026"},
        // Characters, not bytes: 71 characters of which many take several bytes.
        {"\u30e1\u30e2",
         std::string(30, 'x') + std::string("\u00e9\u00e9\u00e9\u00e9\u00e9") +
             std::string(31, 'y'),
         "\u30e1\u30e2 \u2014 " + std::string(30, 'x') + "\u00e9\u00e9\u00e9\u00e9\u00e9" +
             std::string(29, 'y') + "\u2026"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(targetText(window(1, c.app, c.title)), c.expected) << c.title;
    // Desktops are named by their ordinal.
    EXPECT_EQ(spaceText({7, 1, true}), "Desktop 1 (current)");
    EXPECT_EQ(spaceText({9, 2, false}), "Desktop 2");
}

TEST(TargetText, AWordMeansANumberAWholeNameOrAPartOfOne) {
    const std::vector<CaptureTarget> targets{
        window(11, "gedit", "Notes.txt - gedit"), window(12, "gedit", "Todo.txt - gedit"),
        window(13, "Calculator", "Calculator"), window(14, "Terminal", "gedit tips")};
    EXPECT_EQ(resolveTarget(targets, "12")->id, 12u);
    EXPECT_EQ(resolveTarget(targets, "calculator")->id, 13u);  // name and title alike
    EXPECT_EQ(resolveTarget(targets, "todo")->id, 12u);        // a part of the title
    EXPECT_EQ(resolveTarget(targets, "GEDIT TIPS")->id, 14u);  // a whole title wins

    auto ambiguous = resolveTarget(targets, "gedit");
    ASSERT_FALSE(ambiguous);
    EXPECT_NE(ambiguous.error().find("matches 2 windows"), std::string::npos);
    EXPECT_NE(ambiguous.error().find("11  gedit \u2014 Notes.txt - gedit"), std::string::npos);
    EXPECT_NE(ambiguous.error().find("12  gedit \u2014 Todo.txt - gedit"), std::string::npos);

    for (const char* nothing : {"99", "Mail", ""})
        EXPECT_NE(resolveTarget(targets, nothing).error().find("no window matches"),
                  std::string::npos)
            << nothing;
}

}  // namespace
}  // namespace zd::cli
