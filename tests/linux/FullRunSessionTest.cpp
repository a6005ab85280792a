// Whole capture runs against the real Linux backends: gedit in German and French for the Mac
// App Store, saved as PNG files with the machine put back afterwards; a Flathub export of gedit
// in German and Japanese, each picture the window within 1000 × 700 points on transparency with
// its shadow, the screenshots.xml beside them passing appstreamcli inside a metainfo file; and
// mousepad in German, its menu bar read through the accessibility bus, its picture carrying its
// German titles, read back from the composed bar with text recognition. Last, runs that meet a
// fault of the machine: the target's window closes during the countdown, then the display
// itself goes away; each ends with one line of status, writes no file, and leaves the
// appearance as it found it.

#include <gtest/gtest.h>
#include <signal.h>

#include <QImage>
#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "ImageConversion.h"
#include "PngInspector.h"
#include "composition/MenuTitles.h"
#include "env/AppearanceBackend.h"
#include "env/LanguageOverrideBackend.h"
#include "env/ProcessBackend.h"
#include "linux/AtspiMenuBackend.h"
#include "support/ControlProbe.h"
#include "support/RunHarness.h"
#include "support/SessionFixture.h"
#include "ui/ContentView.h"

namespace zd {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

using testing::readFile;

class FullRunInSession : public testing::SessionTest {
  protected:
    // The application in English, its window picked by a run that saves under the session's
    // folder.
    void prepare(const std::vector<std::string>& command) {
        setenv("LANG", "en_US.UTF-8", 1);
        unsetenv("LC_ALL");
        unsetenv("LANGUAGE");
        app = launchApp(command);
        ASSERT_TRUE(app);
        // Each test's own settings and save folder: the suite shares one session.
        const std::string name = ::testing::UnitTest::GetInstance()->current_test_info()->name();
        folder = session().directory() / name;
        harness = testing::RunHarness::create((session().directory() / (name + ".json")).string(),
                                              folder.string());
        ASSERT_TRUE(harness);
        harness->view().countdownSeconds = 0;
        ASSERT_TRUE(harness->selectTargetOf(app->pid()));
    }
    void TearDown() override {
        if (harness) {
            for (const auto& each :
                 harness->env().processes->runningApplications("org.gnome.gedit"))
                harness->env().processes->forceTerminate(each.pid);
        }
    }

    std::unique_ptr<testing::AppProcess> app;
    fs::path folder;
    std::unique_ptr<testing::RunHarness> harness;
};

TEST_F(FullRunInSession, GeditInGermanAndFrenchIsSavedThenEverythingIsPutBack) {
    // Started ignoring SIGTERM: each relaunch has to force it.
    ASSERT_NO_FATAL_FAILURE(prepare({"sh", "-c", "trap '' TERM; exec gedit"}));
    Environment& env = harness->env();
    ContentView& view = harness->view();
    view.languages = {{"de", "German"}, {"fr", "French"}};
    view.outputSize = OutputSize::mas1280;
    const auto darkBefore = env.appearance->readDarkMode();
    ASSERT_TRUE(darkBefore);

    std::vector<std::string> stages;
    auto watching = view.progress.subscribe([&](CaptureProgressModel::Field field) {
        if (field == CaptureProgressModel::Field::captureStage)
            stages.push_back(view.progress.captureStage());
    });
    ASSERT_TRUE(harness->takeShotsAndWait()) << view.progress.statusMessage();
    ASSERT_TRUE(view.lastRunRoot) << view.progress.statusMessage() << " after "
                                  << ::testing::PrintToString(stages);
    EXPECT_EQ(view.progress.statusMessage(), "Saved 4 shots to " + *view.lastRunRoot + ".");
    EXPECT_EQ(fs::path(*view.lastRunRoot).parent_path(), folder);

    // Each picture is a full canvas; German and French differ, Light and Dark differ.
    std::map<std::string, QImage> pictures;
    for (const char* code : {"de", "fr"}) {
        for (const char* mode : {"light", "dark"}) {
            const auto file = fs::path(*view.lastRunRoot) / code / (std::string(mode) + ".png");
            QImage image(QString::fromStdString(file.string()));
            ASSERT_FALSE(image.isNull()) << file;
            EXPECT_EQ(image.size(), QSize(1280, 800));
            // Over the picture backgrounds every pixel is opaque: RGB, no alpha channel.
            EXPECT_EQ(readFile(file).substr(25, 1), std::string(1, '\2'))
                << file << ": colour type";
            pictures[std::string(code) + "-" + mode] = image;
        }
    }
    EXPECT_NE(pictures["de-light"], pictures["fr-light"]);
    EXPECT_NE(pictures["de-light"], pictures["de-dark"]);

    // The appearance is back as it was; the language override goes, and gedit comes back in
    // its own language.
    EXPECT_EQ(env.appearance->readDarkMode()->standardOutput, darkBefore->standardOutput);
    ASSERT_TRUE(testing::runEventsUntil(
        [&] {
            for (const auto& each : env.processes->runningApplications("org.gnome.gedit")) {
                for (const auto& w : testing::probeWindows()) {
                    if (w.pid == each.pid && w.title.find("Untitled Document") != std::string::npos)
                        return true;
                }
            }
            return false;
        },
        60s));
    EXPECT_NE(env.languageOverride->runDefaults({"read", "org.gnome.gedit", "AppleLanguages"})
                  ->exitStatus,
              0);
}

TEST_F(FullRunInSession, FlathubExportInGermanAndJapaneseWithAValidScreenshotsSnippet) {
    ASSERT_NO_FATAL_FAILURE(prepare({"gedit"}));
    ContentView& view = harness->view();
    view.store = Store::flathub;
    view.languages = {{"de", "German"}, {"ja", "Japanese"}};
    view.sizePreset = WindowSizePreset::full;  // asks for more than the limit
    ASSERT_TRUE(harness->takeShotsAndWait()) << view.progress.statusMessage();
    ASSERT_TRUE(view.lastRunRoot) << view.progress.statusMessage();
    const fs::path root(*view.lastRunRoot);

    const double scale = view.captureScale();
    for (const char* file : {"de/light.png", "de/dark.png", "ja/light.png", "ja/dark.png"}) {
        const std::string bytes = readFile(root / file);
        const auto facts = PngInspector::inspect(
            {reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
        ASSERT_TRUE(facts.hasValue()) << file << ": " << facts.error();
        EXPECT_EQ(facts->colourType, 6) << file;
        // The window: opaque, within the limit, centred with its margins.
        EXPECT_LE(facts->opaqueWidth, 1000 * scale) << file;
        EXPECT_LE(facts->opaqueHeight, 700 * scale) << file;
        EXPECT_GT(facts->opaqueWidth, 400 * scale) << file;
        const QImage picture(QString::fromStdString((root / file).string()));
        const int margin = (picture.width() - facts->opaqueWidth) / 2;
        EXPECT_EQ(picture.width(), facts->opaqueWidth + 2 * margin) << file;
        // Alpha only around the window: the window's own box is wholly opaque, the corners
        // are clear, the shadow under the window is partly there.
        for (int y = margin; y < margin + facts->opaqueHeight; y += 7)
            for (int x = margin; x < margin + facts->opaqueWidth; x += 7)
                ASSERT_EQ(qAlpha(picture.pixel(x, y)), 255) << file << " at " << x << "," << y;
        EXPECT_EQ(qAlpha(picture.pixel(0, 0)), 0) << file;
        const int belowWindow =
            qAlpha(picture.pixel(picture.width() / 2, margin + facts->opaqueHeight + margin / 4));
        EXPECT_GT(belowWindow, 0) << file;
        EXPECT_LT(belowWindow, 255) << file;
    }
    // gedit relaunched in Japanese shows other words than in German.
    EXPECT_NE(QImage(QString::fromStdString((root / "de/light.png").string())),
              QImage(QString::fromStdString((root / "ja/light.png").string())));

    // The snippet inside a metainfo file of gedit's kind passes the validator.
    const std::string snippet = readFile(root / "screenshots.xml");
    EXPECT_NE(snippet.find("xml:lang=\"ja\""), std::string::npos) << snippet;
    const fs::path metainfo = session().directory() / "org.example.Gedit.metainfo.xml";
    std::ofstream(metainfo) << R"(<?xml version="1.0" encoding="UTF-8"?>
<component type="desktop-application">
  <id>org.example.Gedit</id>
  <metadata_license>CC0-1.0</metadata_license>
  <project_license>GPL-2.0-or-later</project_license>
  <name>Text Editor</name>
  <summary>Edits text files</summary>
  <description><p>A text editor that opens, edits and saves plain text files of any kind.</p></description>
  <launchable type="desktop-id">org.example.Gedit.desktop</launchable>
  <url type="homepage">https://example.org</url>
  <content_rating type="oars-1.1"/>
  <releases><release version="1.0" date="2026-01-01"/></releases>
)" << snippet << "</component>\n";
    const std::string command = "appstreamcli validate --no-net --pedantic '" + metainfo.string() +
                                "' > '" + metainfo.string() + ".log' 2>&1";
    EXPECT_EQ(std::system(command.c_str()), 0) << readFile(metainfo.string() + ".log");
}

bool has(const std::vector<std::string>& titles, const std::string& title) {
    return std::find(titles.begin(), titles.end(), title) != titles.end();
}

TEST_F(FullRunInSession, AGermanMousepadShotCarriesMousepadsGermanMenus) {
    ASSERT_NO_FATAL_FAILURE(prepare({"mousepad"}));
    // In English first, as the accessibility bus shows its menu bar.
    x11::AtspiMenuBackend menus;
    std::optional<std::vector<std::string>> english;
    ASSERT_TRUE(testing::waitFor([&] {
        english = MenuTitles::fromMenuBars(menus.menuBars(app->pid()));
        return english && !english->empty();
    }));
    EXPECT_EQ(english->front(), "File");

    ContentView& view = harness->view();
    view.languages = {{"de", "German"}};
    view.enabledAppearances = {AppearanceMode::light};
    view.outputSize = OutputSize::mas2880;
    ASSERT_TRUE(harness->takeShotsAndWait()) << view.progress.statusMessage();
    ASSERT_TRUE(view.lastRunRoot) << view.progress.statusMessage();
    const QImage picture(QString::fromStdString((fs::path(*view.lastRunRoot) / "de/light.png")));
    ASSERT_EQ(picture.size(), QSize(2880, 1800));
    // The bar takes the menu bar's 24 points of a 1080-point-high screen.
    const auto titles = testing::menuTitlesOn(
        fromQImage(picture.copy(0, 0, picture.width(), 1800 * 24 / 1080)), view.menuBar.appName);
    EXPECT_TRUE(has(titles, "Datei") && has(titles, "Bearbeiten") && has(titles, "Hilfe"))
        << ::testing::PrintToString(titles);
    EXPECT_FALSE(has(titles, "File")) << ::testing::PrintToString(titles);

    // The run puts mousepad back in its own language; end it once it is back.
    auto mousepads = [] {
        std::vector<std::int32_t> pids;
        for (const auto& w : testing::probeWindows()) {
            if (w.title.find("Mousepad") != std::string::npos)
                pids.push_back(w.pid);
        }
        return pids;
    };
    EXPECT_TRUE(testing::runEventsUntil(
        [&] {
            for (const auto pid : mousepads()) {
                const auto back = MenuTitles::fromMenuBars(menus.menuBars(pid));
                if (back && !back->empty() && back->front() == "File")
                    return true;
            }
            return false;
        },
        60s));
    for (const auto pid : mousepads())
        harness->env().processes->forceTerminate(pid);
}

// Last in the suite: the display it takes away is the session's.
TEST_F(FullRunInSession, TheTargetClosingOrTheDisplayGoingAwayEndsTheRunWithNothingWritten) {
    // A run of gedit in both appearances whose countdown calls `fault` at its first second.
    auto runWithFaultInCountdown = [&](const std::function<void(pid_t gedit)>& fault) {
        ASSERT_NO_FATAL_FAILURE(prepare({"gedit"}));
        ContentView& view = harness->view();
        view.countdownSeconds = 2;
        view.outputSize = OutputSize::mas1280;
        const auto darkBefore = harness->env().appearance->readDarkMode();
        ASSERT_TRUE(darkBefore);
        bool struck = false;
        auto watching = view.progress.subscribe([&](CaptureProgressModel::Field field) {
            if (field == CaptureProgressModel::Field::countdownRemaining && !struck &&
                view.progress.countdownRemaining() == 2) {
                struck = true;
                fault(app->pid());
            }
        });
        ASSERT_TRUE(harness->takeShotsAndWait(120s));
        EXPECT_TRUE(struck);
        EXPECT_TRUE(view.progress.statusMessage().starts_with("Capture failed: "))
            << view.progress.statusMessage();
        EXPECT_EQ(std::count_if(fs::recursive_directory_iterator(folder), {},
                                [](const fs::directory_entry& e) { return e.is_regular_file(); }),
                  0);
        EXPECT_FALSE(view.isWorking);
        // The colour scheme lives on the session bus, which outlives the display.
        EXPECT_EQ(harness->env().appearance->readDarkMode()->standardOutput,
                  darkBefore->standardOutput);
    };
    {
        SCOPED_TRACE("the target closes");
        runWithFaultInCountdown([](pid_t gedit) { kill(gedit, SIGKILL); });
    }
    SCOPED_TRACE("the display goes away");
    runWithFaultInCountdown([this](pid_t) {
        ASSERT_GT(session().displayServerPid(), 0);
        kill(session().displayServerPid(), SIGKILL);
    });
}

}  // namespace
}  // namespace zd
