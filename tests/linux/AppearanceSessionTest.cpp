// Dark reaches every toolkit: a GTK 3 (gedit), a libadwaita (gnome-text-editor) and a Qt 6
// application (Qt Designer) are captured by the run in Light and in Dark, the Dark picture is
// measured dark, and everything the switch touched is put back byte for byte.

#include <gtest/gtest.h>

#include "control/AppearanceController.h"
#include "linux/GnomeAppearanceBackend.h"
#include "support/ControlProbe.h"
#include "support/RunHarness.h"
#include "support/SessionFixture.h"
#include "ui/ContentView.h"

namespace zd {
namespace {

using namespace std::chrono_literals;
using AppearanceController::Mode;

using testing::readFile;

class DarkInEveryToolkit : public testing::SessionTest,
                           public ::testing::WithParamInterface<std::vector<std::string>> {};

TEST_P(DarkInEveryToolkit, TheDarkShotIsDarkAndEverySettingComesBack) {
    const auto qtConfig = session().directory() / "config" / "qt6ct" / "qt6ct.conf";
    const std::string qtBefore = readFile(qtConfig);
    const std::string settingsBefore = readFile(session().settingsConfig());
    // The desktop's own xsettingsd, which the switch rewrites, is found by its display.
    const auto daemon = x11::GnomeAppearanceBackend::runningSettingsDaemon();
    ASSERT_TRUE(daemon);
    EXPECT_EQ(daemon->first, session().settingsConfig());
    EXPECT_EQ(daemon->second, session().settingsDaemonPid());
    auto app = launchApp(GetParam());
    ASSERT_TRUE(app);
    auto harness = testing::RunHarness::create((session().directory() / "settings.json").string(),
                                               (session().directory() / "run").string());
    ASSERT_TRUE(harness);
    ContentView& view = harness->view();
    view.countdownSeconds = 0;
    ASSERT_TRUE(harness->selectTargetOf(app->pid()));
    const auto before = harness->env().appearance->readDarkMode();
    ASSERT_TRUE(before);
    std::this_thread::sleep_for(2s);  // the window's first frames drawn

    std::optional<Expected<std::vector<CapturedShot>, RunError>> shots;
    spawn([](ContentView& v, auto& out) -> Task<void> {
        out.emplace(co_await v.captureCurrentLanguage(v.selectedTarget(), "", "Current"));
    }(view, shots));
    ASSERT_TRUE(testing::runEventsUntil([&] { return shots.has_value(); }, 60s));
    ASSERT_TRUE(*shots) << view.progress.statusMessage();
    ASSERT_EQ(shots->value().size(), 2u);
    const double light = testing::meanLuminance(shots->value()[0].image);
    const double dark = testing::meanLuminance(shots->value()[1].image);
    RecordProperty("light", std::to_string(light));
    RecordProperty("dark", std::to_string(dark));
    EXPECT_GT(light, 170) << GetParam()[0];
    // Designer's empty form area is the same grey in both: its chrome alone turns dark.
    EXPECT_LT(dark, 0.7 * light) << GetParam()[0] << " light " << light << " dark " << dark;
    EXPECT_TRUE(view.notFollowingDark.empty());

    EXPECT_EQ(harness->env().appearance->readDarkMode()->standardOutput, before->standardOutput);
    EXPECT_EQ(readFile(qtConfig), qtBefore);
    EXPECT_EQ(readFile(session().settingsConfig()), settingsBefore);
}

INSTANTIATE_TEST_SUITE_P(Toolkits, DarkInEveryToolkit,
                         ::testing::Values(std::vector<std::string>{"gedit"},
                                           std::vector<std::string>{"gnome-text-editor"},
                                           std::vector<std::string>{"/usr/lib/qt6/bin/designer"}),
                         [](const auto& tested) {
                             return std::string(tested.index == 0   ? "Gtk3"
                                                : tested.index == 1 ? "Libadwaita"
                                                                    : "Qt6");
                         });

TEST(GnomeAppearanceBackend, ConfigsAndThemesOfTheOtherModeKeepEverythingElse) {
    using Backend = x11::GnomeAppearanceBackend;
    EXPECT_EQ(Backend::withThemeName("Net/ThemeName \"Adwaita\"\nNet/IconThemeName \"Adwaita\"\n",
                                     "Adwaita-dark"),
              "Net/ThemeName \"Adwaita-dark\"\nNet/IconThemeName \"Adwaita\"\n");
    EXPECT_EQ(Backend::withThemeName("Xft/DPI 98304\n", "Adwaita"),
              "Xft/DPI 98304\nNet/ThemeName \"Adwaita\"\n");
    EXPECT_EQ(Backend::withQtPalette("[Appearance]\ncustom_palette=false\nstyle=Fusion\n[Fonts]\n",
                                     true, "/d.conf"),
              "[Appearance]\ncustom_palette=true\nstyle=Fusion\ncolor_scheme_path=/d.conf\n"
              "[Fonts]\n");
    EXPECT_EQ(Backend::withQtPalette("[Fonts]\n", false, "/d.conf"),
              "[Fonts]\n[Appearance]\ncustom_palette=false\n");
    EXPECT_EQ(Backend::gtkThemeFor("Arc", true), "Adwaita-dark");
    EXPECT_EQ(Backend::gtkThemeFor("Arc", false), "Arc");
    EXPECT_EQ(Backend::gtkThemeFor("Arc-Dark", true), "Arc-Dark");
    EXPECT_EQ(Backend::gtkThemeFor("Arc-Dark", false), "Arc");
}

TEST(GnomeAppearanceBackend, AMissingToolReadsAsNothingAndCannotBeWritten) {
    x11::GnomeAppearanceBackend::Options options;
    options.gsettings = "/nonexistent/gsettings";
    x11::GnomeAppearanceBackend backend(options);
    EXPECT_FALSE(AppearanceController::current(backend));
    const auto result = AppearanceController::set(backend, Mode::dark);
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().kind, AppearanceController::Failure::Kind::automationDenied);
}

}  // namespace
}  // namespace zd
