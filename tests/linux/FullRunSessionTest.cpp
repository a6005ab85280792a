// A whole capture run against the real Linux backends: gedit in German and French, Light and
// Dark, saved as PNG files, and the machine put back afterwards.

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QGuiApplication>
#include <QImage>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <thread>

#include "common/PlatformEnvironment.h"
#include "env/AppearanceBackend.h"
#include "env/LanguageOverrideBackend.h"
#include "env/ProcessBackend.h"
#include "model/Preferences.h"
#include "run/LiveRunServices.h"
#include "support/ControlProbe.h"
#include "support/SessionFixture.h"
#include "testing/EventLog.h"
#include "testing/FakeDialogBackend.h"
#include "ui/ContentView.h"

namespace zd {
namespace {

using namespace std::chrono_literals;

// Runs the Qt event loop (the run's timers and worker results) until `done` or `limit`.
bool runEventsUntil(const std::function<bool()>& done, std::chrono::seconds limit) {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!done()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        std::this_thread::sleep_for(5ms);
    }
    return true;
}

class FullRunInSession : public testing::SessionTest {
  public:
    static void SetUpTestSuite() {
        SessionTest::SetUpTestSuite();
        // Drawing needs a GUI application object; it draws offscreen, not on the session.
        if (!QCoreApplication::instance()) {
            static int argc = 1;
            static char name[] = "zd_linux_tests";
            static char* argv[] = {name, nullptr};
            qputenv("QT_QPA_PLATFORM", "offscreen");
            static QGuiApplication app(argc, argv);
        }
    }
};

TEST_F(FullRunInSession, GeditInGermanAndFrenchIsSavedThenEverythingIsPutBack) {
    setenv("LANG", "en_US.UTF-8", 1);
    unsetenv("LC_ALL");
    unsetenv("LANGUAGE");
    auto gedit = launchApp({"gedit"});
    ASSERT_TRUE(gedit);

    const auto folder = session().directory() / "run";
    auto platform =
        PlatformEnvironment::create({(session().directory() / "settings.json").string()});
    ASSERT_TRUE(platform) << platform.error();
    Environment& env = (*platform)->environment();
    testing::EventLog log;
    testing::FakeDialogBackend dialogs(log);
    env.dialogs = &dialogs;
    Preferences::setURL(*env.settings, folder.string(), "saveFolderURL");
    std::filesystem::create_directories(folder);

    LiveRunServices services(env);
    ContentView view(env, services,
                     Preferences::load(*env.settings, (*platform)->resourceBundle()));
    view.languages = {{"de", "German"}, {"fr", "French"}};
    view.countdownSeconds = 0;
    view.outputSize = OutputSize::mas1280;
    view.progress.onCancel = [&view] { view.cancelCapture(); };

    ASSERT_TRUE(testing::waitFor([&] {
        view.reloadTargets();
        for (const auto& t : view.targets) {
            if (t.pid == gedit->pid())
                view.selectedTargetID = t.id;
        }
        return view.selectedTargetID.has_value();
    }));
    const auto darkBefore = env.appearance->readDarkMode();
    ASSERT_TRUE(darkBefore);

    std::vector<std::string> stages;
    view.progress.subscribe([&](CaptureProgressModel::Field field) {
        if (field == CaptureProgressModel::Field::captureStage)
            stages.push_back(view.progress.captureStage());
    });
    view.takeShots();
    ASSERT_TRUE(runEventsUntil([&] { return !view.isWorking; }, 180s))
        << view.progress.statusMessage();
    ASSERT_TRUE(view.lastRunRoot) << view.progress.statusMessage() << " after "
                                  << ::testing::PrintToString(stages);
    EXPECT_EQ(view.progress.statusMessage(), "Saved 4 shots to " + *view.lastRunRoot + ".");
    EXPECT_EQ(std::filesystem::path(*view.lastRunRoot).parent_path(), folder);

    // Each picture is a full canvas; German and French differ, Light and Dark differ.
    std::map<std::string, QImage> pictures;
    for (const char* code : {"de", "fr"}) {
        for (const char* mode : {"light", "dark"}) {
            const auto file =
                std::filesystem::path(*view.lastRunRoot) / code / (std::string(mode) + ".png");
            QImage image(QString::fromStdString(file.string()));
            ASSERT_FALSE(image.isNull()) << file;
            EXPECT_EQ(image.size(), QSize(1280, 800));
            pictures[std::string(code) + "-" + mode] = image;
        }
    }
    EXPECT_NE(pictures["de-light"], pictures["fr-light"]);
    EXPECT_NE(pictures["de-light"], pictures["de-dark"]);

    // The appearance is back as it was; the language override goes, and gedit comes back in
    // its own language.
    EXPECT_EQ(env.appearance->readDarkMode()->standardOutput, darkBefore->standardOutput);
    ASSERT_TRUE(runEventsUntil(
        [&] {
            for (const auto& app : env.processes->runningApplications("org.gnome.gedit")) {
                for (const auto& w : testing::probeWindows()) {
                    if (w.pid == app.pid && w.title.find("Untitled Document") != std::string::npos)
                        return true;
                }
            }
            return false;
        },
        60s));
    EXPECT_NE(env.languageOverride->runDefaults({"read", "org.gnome.gedit", "AppleLanguages"})
                  ->exitStatus,
              0);
    for (const auto& app : env.processes->runningApplications("org.gnome.gedit")) {
        env.processes->forceTerminate(app.pid);
    }
}

}  // namespace
}  // namespace zd
