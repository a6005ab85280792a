// The pop-up button that fills its row: items rebuilt only on new titles, equal titles kept
// apart by position, and a selection label that is no item's title.
#include "controls/FillingPopUp.h"

#include <gtest/gtest.h>

#include <QTest>

#include "AppTestSupport.h"

namespace zd::app {
namespace {

struct FillingPopUpTest : testing::AppTest {
    FillingPopUp<int> popUp;
    std::vector<int> chosen;
    std::function<void(const int&)> record = [this](const int& id) { chosen.push_back(id); };
};

TEST_F(FillingPopUpTest, KeepsItsItemsWhileTheTitlesStayTheSame) {
    popUp.update("B", {{1, "A"}, {2, "B"}}, record);
    EXPECT_EQ(popUp.currentIndex(), 1);
    popUp.setItemData(0, 42);                         // a mark that a rebuild would lose
    popUp.update("Z", {{7, "A"}, {8, "B"}}, record);  // new ids, same titles; no item titled Z
    EXPECT_EQ(popUp.itemData(0).toInt(), 42);
    EXPECT_EQ(popUp.currentIndex(), -1);
    EXPECT_EQ(popUp.shownText(), "Z");
    popUp.update("A", {{7, "A"}, {8, "C"}}, record);
    EXPECT_FALSE(popUp.itemData(0).isValid());
    EXPECT_EQ(popUp.shownText(), "A");
}

TEST_F(FillingPopUpTest, EqualTitlesStayApartThePositionPicksTheIdAndNoneShowTheLabel) {
    popUp.update("Same", {{1, "Same"}, {2, "Same"}}, record);
    EXPECT_EQ(popUp.count(), 2);
    EXPECT_EQ(popUp.currentIndex(), 0);
    QTest::keyClick(&popUp, Qt::Key_Down);  // the user chooses the second
    EXPECT_EQ(chosen, std::vector<int>{2});

    popUp.update("No window", {}, record);  // without items: the selection label alone
    EXPECT_EQ(popUp.count(), 0);
    EXPECT_EQ(popUp.shownText(), "No window");
    EXPECT_EQ(popUp.sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
}

}  // namespace
}  // namespace zd::app
