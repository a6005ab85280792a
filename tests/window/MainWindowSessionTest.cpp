// The application on a private desktop with gedit, driven through its controls alone: pick
// gedit, add German, countdown Off, Take. The panel shows while gedit keeps the activation,
// and the two German pictures are written at the canvas's size. Screenshots of the window and
// of the screen during the run are left in the build folder for a person to look at. Closing
// the window then ends the program.

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QMenu>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include <filesystem>
#include <fstream>

#include "common/PlatformEnvironment.h"
#include "env/Environment.h"
#include "model/Preferences.h"
#include "panel/ProgressPanel.h"
#include "shell/ZephyrdockApp.h"
#include "support/ControlProbe.h"
#include "support/SessionFixture.h"
#include "ui/ContentView.h"
#include "window/ActionsBar.h"
#include "window/LanguageSection.h"
#include "window/MainWindow.h"
#include "window/SourceSection.h"

namespace zd {
namespace {

namespace fs = std::filesystem;

class MainWindowInSession : public testing::SessionTest {
  public:
    static void SetUpTestSuite() {
        x11::HeadlessSession::Options options;
        options.width = 1440;
        options.height = 900;
        startSession(options);
    }
};

// Clicks the menu's item titled `title` as soon as the menu is open (a menu runs its own loop).
void clickWhenOpen(QMenu* menu, const QString& title) {
    QTimer::singleShot(300, menu, [menu, title] {
        for (QAction* action : menu->actions())
            if (action->text() == title)
                QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
    });
}

std::string commandOf(std::int32_t pid) {
    std::ifstream comm("/proc/" + std::to_string(pid) + "/comm");
    std::string name;
    std::getline(comm, name);
    return name;
}

TEST_F(MainWindowInSession, ShootsGeditInGermanThroughClicks) {
    const fs::path pictures = session().directory() / "Shots";
    const fs::path shots = fs::path(ZD_BINARY_DIR) / "window-session";
    fs::create_directories(pictures);
    fs::create_directories(shots);
    const std::string settingsPath = (session().directory() / "settings.json").string();
    {
        auto platform = PlatformEnvironment::create({settingsPath});
        ASSERT_TRUE(platform);
        Preferences::setURL(*(*platform)->environment().settings, pictures.string(),
                            Preferences::Keys::saveFolderURL);
    }
    auto editor = launchApp({"gedit", "--new-window"});
    ASSERT_TRUE(editor);
    // Up before Zephyrdock, which then comes to the front and lists it.
    ASSERT_TRUE(testing::waitFor([&] {
        for (const auto& w : testing::probeWindows())
            if (w.pid == editor->pid() && w.viewable)
                return true;
        return false;
    }));

    static int argc = 1;
    static char name[] = "Zephyrdock";
    static char* argv[] = {name, nullptr};
    QApplication qt(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    app::ZephyrdockApp zephyrdock;
    ASSERT_FALSE(zephyrdock.start({settingsPath}).has_value());
    app::MainWindow& window = *zephyrdock.window();
    ContentView& view = *zephyrdock.view();

    // The one-second tick brings gedit into the source picker.
    auto* picker = window.sourceSection()->picker();
    int geditItem = -1;
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
            geditItem = picker->findText("gedit", Qt::MatchStartsWith);
            return geditItem > 0;
        },
        20000));
    QTest::mouseClick(picker, Qt::LeftButton);
    QAbstractItemView* list = picker->view();
    ASSERT_TRUE(QTest::qWaitFor([&] { return list->isVisible(); }));
    QTest::qWait(600);  // a release right after the popup opened belongs to the opening click
    const QRect item = list->visualRect(list->model()->index(geditItem, 0));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, item.center());
    ASSERT_TRUE(QTest::qWaitFor([&] { return view.selectedTargetID.has_value(); }));

    QToolButton* add = window.languageSection()->addButton();
    clickWhenOpen(add->menu(), "German (de)");
    QTest::mouseClick(add, Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor([&] { return view.languages.size() == 1; }));
    EXPECT_EQ(view.languages[0].code, "de");

    app::ActionsBar& bar = *window.actionsBar();
    clickWhenOpen(bar.countdownMenu()->menu(), "Off");
    QTest::mouseClick(bar.countdownMenu(), Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor([&] { return view.countdownSeconds == 0; }));

    // At the first picture taken: the panel floats, the German gedit keeps the activation.
    bool panelShown = false;
    std::string activeAtShot;
    Subscription firstShot = view.progress.subscribe([&](CaptureProgressModel::Field field) {
        if (field != CaptureProgressModel::Field::shotsCompleted ||
            view.progress.shotsCompleted() == 0 || !activeAtShot.empty())
            return;
        panelShown = zephyrdock.panel()->isVisible();
        activeAtShot = commandOf(testing::activeWindowPid());
        QGuiApplication::primaryScreen()->grabWindow(0).save(
            QString::fromStdString((shots / "during-run.png").string()));
        zephyrdock.panel()->grab().save(QString::fromStdString((shots / "panel.png").string()));
    });
    ASSERT_EQ(bar.takeButton()->text(), "Take 2 shots");
    QTest::mouseClick(bar.takeButton(), Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor([&] { return view.isWorking; }, 5000));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !view.isWorking; }, 120000));

    EXPECT_TRUE(panelShown);
    EXPECT_EQ(activeAtShot, "gedit");
    EXPECT_FALSE(zephyrdock.panel()->isVisible());
    ASSERT_TRUE(view.lastRunRoot.has_value());
    const Size canvas = view.canvasSize();
    for (const char* file : {"light.png", "dark.png"}) {
        const fs::path path = fs::path(*view.lastRunRoot) / "de" / file;
        ASSERT_TRUE(fs::exists(path)) << path;
        const QImage picture(QString::fromStdString(path.string()));
        EXPECT_EQ(picture.width(), static_cast<int>(canvas.width)) << path;
        EXPECT_EQ(picture.height(), static_cast<int>(canvas.height)) << path;
    }
    QTest::qWait(300);
    EXPECT_TRUE(bar.revealButton()->isEnabled());
    EXPECT_TRUE(bar.destinationMenu()->isVisible());
    window.grab().save(QString::fromStdString((shots / "window.png").string()));

    // Closing the window ends the program; the panel, still there, doesn't hold it.
    QTimer::singleShot(0, &window, [&window] { window.close(); });
    QTimer::singleShot(10000, &qt, [] { QCoreApplication::exit(1); });
    EXPECT_EQ(QApplication::exec(), 0);
}

}  // namespace
}  // namespace zd
