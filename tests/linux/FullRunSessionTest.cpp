// A whole capture run against the real Linux backends: gedit in German and French, Light and
// Dark, saved as PNG files, and the machine put back afterwards.

#include <gtest/gtest.h>

#include <QImage>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "env/AppearanceBackend.h"
#include "env/LanguageOverrideBackend.h"
#include "env/ProcessBackend.h"
#include "support/ControlProbe.h"
#include "support/RunHarness.h"
#include "support/SessionFixture.h"
#include "ui/ContentView.h"

namespace zd {
namespace {

using namespace std::chrono_literals;

class FullRunInSession : public testing::SessionTest {};

TEST_F(FullRunInSession, GeditInGermanAndFrenchIsSavedThenEverythingIsPutBack) {
    setenv("LANG", "en_US.UTF-8", 1);
    unsetenv("LC_ALL");
    unsetenv("LANGUAGE");
    auto gedit = launchApp({"gedit"});
    ASSERT_TRUE(gedit);

    const auto folder = session().directory() / "run";
    auto harness = testing::RunHarness::create((session().directory() / "settings.json").string(),
                                               folder.string());
    ASSERT_TRUE(harness);
    Environment& env = harness->env();
    ContentView& view = harness->view();
    view.languages = {{"de", "German"}, {"fr", "French"}};
    view.countdownSeconds = 0;
    view.outputSize = OutputSize::mas1280;
    ASSERT_TRUE(harness->selectTargetOf(gedit->pid()));
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
            // Over the picture backgrounds every pixel is opaque: RGB, no alpha channel.
            std::ifstream png(file, std::ios::binary);
            char header[26] = {};
            png.read(header, sizeof header);
            EXPECT_EQ(header[25], 2) << file << ": colour type";
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
