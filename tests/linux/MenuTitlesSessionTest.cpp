// The target's own menus in the shot's language: mousepad's menu bar read through the
// accessibility bus, and a German run whose picture carries mousepad's German titles, read back
// from the composed picture's bar with text recognition.

#include <gtest/gtest.h>

#include <QImage>
#include <algorithm>

#include "ImageConversion.h"
#include "composition/MenuTitles.h"
#include "env/ProcessBackend.h"
#include "linux/AtspiMenuBackend.h"
#include "support/ControlProbe.h"
#include "support/RunHarness.h"
#include "support/SessionFixture.h"
#include "ui/ContentView.h"

namespace zd {
namespace {

using namespace std::chrono_literals;
using Strings = std::vector<std::string>;

class MenusInSession : public testing::SessionTest {};

bool has(const Strings& titles, const std::string& title) {
    return std::find(titles.begin(), titles.end(), title) != titles.end();
}

TEST_F(MenusInSession, AGermanMousepadShotCarriesMousepadsGermanMenus) {
    setenv("LANG", "en_US.UTF-8", 1);
    unsetenv("LC_ALL");
    unsetenv("LANGUAGE");
    auto pad = launchApp({"mousepad"});
    ASSERT_TRUE(pad);

    // In English first, as the accessibility bus shows its menu bar.
    x11::AtspiMenuBackend menus;
    std::optional<Strings> english;
    ASSERT_TRUE(testing::waitFor([&] {
        english = MenuTitles::fromMenuBars(menus.menuBars(pad->pid()));
        return english && !english->empty();
    }));
    EXPECT_EQ(english->front(), "File");

    auto harness = testing::RunHarness::create((session().directory() / "settings.json").string(),
                                               (session().directory() / "run").string());
    ASSERT_TRUE(harness);
    ContentView& view = harness->view();
    view.languages = {{"de", "German"}};
    view.enabledAppearances = {AppearanceMode::light};
    view.countdownSeconds = 0;
    view.outputSize = OutputSize::mas2880;
    ASSERT_TRUE(harness->selectTargetOf(pad->pid()));
    ASSERT_TRUE(harness->takeShotsAndWait()) << view.progress.statusMessage();
    ASSERT_TRUE(view.lastRunRoot) << view.progress.statusMessage();

    const QImage picture(
        QString::fromStdString((std::filesystem::path(*view.lastRunRoot) / "de" / "light.png")));
    ASSERT_EQ(picture.size(), QSize(2880, 1800));
    // The bar takes the menu bar's 24 points of a 1080-point-high screen.
    const Strings titles = testing::menuTitlesOn(
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

}  // namespace
}  // namespace zd
