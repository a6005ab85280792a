// A Flathub export of gedit in German and Japanese against the real backends: each picture is
// the window within 1000 × 700 points on transparency with its shadow, and the screenshots.xml
// beside them passes appstreamcli inside a metainfo file.

#include <gtest/gtest.h>

#include <QImage>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "PngInspector.h"
#include "env/ProcessBackend.h"
#include "support/RunHarness.h"
#include "support/SessionFixture.h"
#include "ui/ContentView.h"

namespace zd {
namespace {

namespace fs = std::filesystem;

class FlathubExportInSession : public testing::SessionTest {};

std::string readAll(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

TEST_F(FlathubExportInSession, GeditInGermanAndJapaneseWithAValidScreenshotsSnippet) {
    setenv("LANG", "en_US.UTF-8", 1);
    unsetenv("LC_ALL");
    unsetenv("LANGUAGE");
    auto gedit = launchApp({"gedit"});
    ASSERT_TRUE(gedit);
    const auto folder = session().directory() / "run";
    auto harness = testing::RunHarness::create((session().directory() / "settings.json").string(),
                                               folder.string());
    ASSERT_TRUE(harness);
    ContentView& view = harness->view();
    view.store = Store::flathub;
    view.languages = {{"de", "German"}, {"ja", "Japanese"}};
    view.countdownSeconds = 0;
    view.sizePreset = WindowSizePreset::full;  // asks for more than the limit
    ASSERT_TRUE(harness->selectTargetOf(gedit->pid()));
    ASSERT_TRUE(harness->takeShotsAndWait()) << view.progress.statusMessage();
    ASSERT_TRUE(view.lastRunRoot) << view.progress.statusMessage();
    const fs::path root(*view.lastRunRoot);

    const double scale = view.captureScale();
    for (const char* file : {"de/light.png", "de/dark.png", "ja/light.png", "ja/dark.png"}) {
        const std::string bytes = readAll(root / file);
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

    // The snippet inside a metainfo file of gedit's kind passes the validator.
    const std::string snippet = readAll(root / "screenshots.xml");
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
    EXPECT_EQ(std::system(command.c_str()), 0) << readAll(metainfo.string() + ".log");

    for (const auto& app : harness->env().processes->runningApplications("org.gnome.gedit"))
        harness->env().processes->forceTerminate(app.pid);
}

}  // namespace
}  // namespace zd
