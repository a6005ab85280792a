// The main window over a ContentView of fakes, on the offscreen platform: what the core can't
// see of the window's wiring.
#include <QCheckBox>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QShortcut>
#include <QTest>
#include <QToolButton>
#include <QVariantAnimation>

#include "AppTestSupport.h"
#include "controls/Tile.h"
#include "shell/ZephyrdockApp.h"
#include "testing/EventLog.h"
#include "testing/FakeDialogBackend.h"
#include "testing/FakeProcessBackend.h"
#include "testing/FakeRunServices.h"
#include "testing/FakeWindowListBackend.h"
#include "testing/InMemorySettingsStore.h"
#include "testing/ManualClock.h"
#include "ui/ContentView.h"
#include "window/ActionsBar.h"
#include "window/BackgroundsSection.h"
#include "window/CompositeWindowsSection.h"
#include "window/GeometrySection.h"
#include "window/MainWindow.h"
#include "window/ScopeSection.h"
#include "window/SizePresetSection.h"
#include "window/SourceSection.h"

namespace zd::app {
namespace {

using namespace std::chrono_literals;
using namespace zd::testing;

// The environment, complete before the view and the window take it.
struct Fakes {
    Fakes() {
        env.clock = &clock;
        env.settings = &store;
        env.dialogs = &dialogs;
        env.windowList = &windows;
        env.processes = &processes;
    }
    EventLog log;
    ManualClock clock;
    InMemorySettingsStore store;
    FakeDialogBackend dialogs{log};
    FakeRunServices services{log};
    FakeWindowListBackend windows;
    FakeProcessBackend processes;
    Environment env;
};

struct MainWindowTest : testing::AppTest, Fakes {
    // After the window appeared (which reloads the lists from the empty fakes).
    void showWithATarget() {
        window.show();
        view.targets = {CaptureTarget{7, "gedit", "Untitled", 42, "org.gnome.gedit", {}}};
        view.notices.announce(ViewChange::lists);
    }
    ContentView view{env, services};
    MainWindow window{view, env, services};
};

TEST_F(MainWindowTest, ScopeSwapsTheSourceSectionsAndKeepsTheirValues) {
    showWithATarget();
    view.setSelectedTargetID(7);
    view.setSizePreset(WindowSizePreset::full);
    QTest::mouseClick(window.scopeSection()->tile(CaptureScope::allWindows), Qt::LeftButton);
    EXPECT_FALSE(window.sourceSection()->isVisible());
    EXPECT_FALSE(window.sizePresetSection()->isVisible());
    EXPECT_TRUE(window.compositeWindowsSection()->isVisible());
    QTest::mouseClick(window.scopeSection()->tile(CaptureScope::singleWindow), Qt::LeftButton);
    EXPECT_TRUE(window.sourceSection()->isVisible());
    EXPECT_FALSE(window.compositeWindowsSection()->isVisible());
    EXPECT_EQ(view.selectedTargetID, 7u);
    EXPECT_EQ(view.sizePreset, WindowSizePreset::full);
    EXPECT_EQ(window.sourceSection()->picker()->shownText().toStdString(), "gedit \u2014 Untitled");
}

TEST_F(MainWindowTest, ABackgroundBlockShowsForEachAppearanceShot) {
    window.show();
    using Modes = std::set<AppearanceMode>;
    for (const Modes& modes : {Modes{AppearanceMode::light}, Modes{AppearanceMode::dark},
                               Modes{AppearanceMode::light, AppearanceMode::dark}}) {
        view.enabledAppearances = modes;
        view.notices.announce(ViewChange::settings);
        for (AppearanceMode mode : allCases<AppearanceMode>())
            EXPECT_EQ(window.backgroundsSection()->block(mode)->isVisible(), modes.contains(mode));
    }
}

TEST_F(MainWindowTest, TheCustomSizeIsStoredOnCommitOnly) {
    window.show();
    view.setOutputSize(OutputSize::custom);
    QLineEdit* width = window.geometrySection()->widthField();
    ASSERT_TRUE(width->isVisible());
    width->setFocus();
    width->selectAll();
    QTest::keyClicks(width, "1234");
    EXPECT_EQ(view.customCanvasWidth, 1234);
    EXPECT_FALSE(store.objectForKey("customCanvasWidth").has_value());
    QTest::keyClick(width, Qt::Key_Return);
    EXPECT_EQ(store.objectForKey("customCanvasWidth"), Value(1234));
}

TEST_F(MainWindowTest, TheTakeButtonCountsShotsAndWaitsForATarget) {
    showWithATarget();
    QPushButton* take = window.actionsBar()->takeButton();
    EXPECT_EQ(window.actionsBar()->takeShortcut()->key(), QKeySequence("Ctrl+Shift+C"));
    EXPECT_EQ(take->text(), "Take 2 shots");
    EXPECT_FALSE(take->isEnabled());
    view.setSelectedTargetID(7);
    EXPECT_TRUE(take->isEnabled());
    view.toggleAppearance(AppearanceMode::dark);
    EXPECT_EQ(take->text(), "Take 1 shot");
    view.isWorking = true;
    view.notices.announce(ViewChange::runState);
    EXPECT_FALSE(take->isEnabled());
}

TEST_F(MainWindowTest, TheRevealButtonPulsesWhenTold) {
    RevealButton* reveal = window.actionsBar()->revealButton();
    EXPECT_FALSE(reveal->isEnabled());
    view.lastRunRoot = "/tmp/run";
    view.pulseRevealButton = true;
    view.notices.announce(ViewChange::lastRun);
    view.notices.announce(ViewChange::revealPulse);
    EXPECT_TRUE(reveal->isEnabled());
    EXPECT_EQ(reveal->pulse()->state(), QAbstractAnimation::Running);
    QTest::qWait(300);
    EXPECT_GT(reveal->scale(), 1.05);
    view.pulseRevealButton = false;
    view.notices.announce(ViewChange::revealPulse);
    EXPECT_EQ(reveal->scale(), 1.0);
    EXPECT_TRUE(window.actionsBar()->destinationMenu()->isVisibleTo(window.actionsBar()));
}

// The tick's gates (no reload during a run, none while inactive) are the core's; here, that the
// window starts it.
TEST_F(MainWindowTest, TheSecondTickReloadsWhileTheWindowIsActive) {
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    windows.requests.clear();
    clock.advance(1s);
    EXPECT_FALSE(windows.requests.empty());
}

TEST_F(MainWindowTest, FileHasNoNewAndHelpOffersUpdatesAfterAbout) {
    int checks = 0;
    installMenus(window, [&] { ++checks; });
    const auto menus = window.menuBar()->actions();
    ASSERT_EQ(menus.size(), 2);
    for (QAction* item : menus[0]->menu()->actions())
        EXPECT_FALSE(item->text().startsWith("New")) << item->text().toStdString();
    const auto help = menus[1]->menu()->actions();
    ASSERT_EQ(help.size(), 2);
    EXPECT_EQ(help[0]->text(), "About Zephyrdock");
    EXPECT_EQ(help[1]->text(), QString::fromUtf8("Check for Updates\u2026"));
    help[1]->trigger();
    EXPECT_EQ(checks, 1);
}

}  // namespace
}  // namespace zd::app
