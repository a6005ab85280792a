#include "capture/TargetLists.h"

#include <gtest/gtest.h>

#include "CaptureTestSupport.h"

namespace zd::testing {
namespace {

class TargetListsTest : public ::testing::Test {
  protected:
    void SetUp() override {
        fakes.addApp(10, "Pad", "org.pad");
        fakes.addApp(20, "Viewer", "org.viewer");
    }
    void list(std::vector<Value> records) { fakes.windowList.setWindows(ValueArray(records)); }
    void reload(std::uint64_t space = 0) {
        TargetLists::reloadTargets(fakes.env(), space, targets, selected);
    }

    CaptureFakes fakes;
    std::vector<CaptureTarget> targets;
    std::optional<std::uint32_t> selected;
};

TEST_F(TargetListsTest, SelectionFollowsTheApplicationWhenItsWindowComesBackUnderANewNumber) {
    list({listed(1, 10, "Pad", "Doc"), listed(2, 20, "Viewer")});
    reload();
    selected = 1;
    // Relaunched: a new pid and window number, same identity.
    fakes.addApp(11, "Pad", "org.pad");
    list({listed(5, 11, "Pad", "Doc"), listed(2, 20, "Viewer")});
    reload();
    EXPECT_EQ(selected, 5u);
    EXPECT_EQ(TargetLists::selectedTarget(targets, selected)->pid, 11);
}

TEST_F(TargetListsTest, SelectionMovesToTheFirstSortedWindowOfTheApplicationOrIsUnset) {
    list({listed(1, 10, "Pad", "b"), listed(2, 10, "Pad", "c"), listed(3, 10, "Pad", "a")});
    reload();
    selected = 1;
    list({listed(2, 10, "Pad", "c"), listed(3, 10, "Pad", "a")});
    reload();
    EXPECT_EQ(selected, 3u);

    list({listed(9, 20, "Viewer")});
    reload();
    EXPECT_FALSE(selected.has_value());
    reload();
    EXPECT_FALSE(selected.has_value()) << "reloading never picks a target by itself";
}

TEST_F(TargetListsTest, SameNameWithAnotherIdentityStillCountsAsTheSameApplication) {
    fakes.addApp(30, "Pad", "com.other.pad");
    list({listed(1, 10, "Pad")});
    reload();
    selected = 1;
    list({listed(4, 30, "Pad")});
    reload();
    EXPECT_EQ(selected, 4u);
}

TEST_F(TargetListsTest, AChosenDesktopNarrowsBothListsAndAWindowOnSeveralDesktopsStays) {
    list({listed(1, 10, "Pad"), listed(2, 20, "Viewer"), listed(3, 20, "Viewer", "sticky")});
    fakes.spaces.placeWindow(1, {100});
    fakes.spaces.placeWindow(2, {200});
    fakes.spaces.placeWindow(3, {100, 200});

    reload(200);
    ASSERT_EQ(targets.size(), 2u);
    EXPECT_EQ(targets[0].id, 2u);
    EXPECT_EQ(targets[1].id, 3u);
    EXPECT_EQ(fakes.spaces.masks.back(), 7);

    std::vector<CompositeEntry> rows;
    TargetLists::reloadCompositeWindows(fakes.env(), 100, rows);
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].id, 1u);
    EXPECT_EQ(rows[1].id, 3u);

    fakes.spaces.queries.clear();
    reload(0);
    EXPECT_EQ(targets.size(), 3u);
    EXPECT_TRUE(fakes.spaces.queries.empty()) << "no desktop is asked about without a choice";
}

TEST(CompositeRows, MergeKeepsTheUsersOrderAndTicksTakesNewTitlesAndAppendsNewWindows) {
    std::vector<CompositeEntry> present{
        {3, "Pad", "old title", false}, {1, "Viewer", "", true}, {2, "Gone", "", true}};
    std::vector<CompositeEntry> fresh{
        {1, "Viewer", "", true}, {4, "New", "", true}, {3, "Pad", "new title", true}};
    auto merged = TargetLists::mergeCompositeRows(present, fresh);
    EXPECT_EQ(merged,
              (std::vector<CompositeEntry>{
                  {3, "Pad", "new title", false}, {1, "Viewer", "", true}, {4, "New", "", true}}));
    EXPECT_TRUE(TargetLists::mergeCompositeRows(present, {}).empty());
}

TEST_F(TargetListsTest, CompositeRowsAskForAllWindowsFrontToBackAllTicked) {
    list({windowRecord(2, 20, "Viewer", "", {0, 0, 60, 60}, 8), listed(1, 10, "Pad", "Doc")});
    std::vector<CompositeEntry> rows;
    TargetLists::reloadCompositeWindows(fakes.env(), 0, rows);
    EXPECT_EQ(rows,
              (std::vector<CompositeEntry>{{2, "Viewer", "", true}, {1, "Pad", "Doc", true}}));
    EXPECT_EQ(fakes.windowList.requests.back(), WindowListOption::allWindows);
}

}  // namespace
}  // namespace zd::testing
