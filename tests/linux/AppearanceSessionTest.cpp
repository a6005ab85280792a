// Dark mode switched live for a GTK 3 application (gedit, through XSETTINGS) and a libadwaita
// one (gnome-calculator, through the GNOME colour scheme), measured from the screen's pixels.

#include <gtest/gtest.h>

#include "control/AppearanceController.h"
#include "linux/GnomeAppearanceBackend.h"
#include "support/ControlProbe.h"
#include "support/SessionFixture.h"

namespace zd {
namespace {

using namespace std::chrono_literals;
using AppearanceController::Mode;

class AppearanceInSession : public testing::SessionTest {};

std::optional<testing::ProbedWindow> windowOf(pid_t pid) {
    for (const auto& w : testing::probeWindows()) {
        if (w.pid == pid && w.viewable && w.frame.width >= 200)
            return w;
    }
    return std::nullopt;
}

TEST_F(AppearanceInSession, BothToolkitsFollowDarkModeLiveAndThePriorModeComesBack) {
    x11::GnomeAppearanceBackend::Options options;
    options.settingsConfig = session().settingsConfig();
    options.settingsDaemonPid = session().settingsDaemonPid();
    x11::GnomeAppearanceBackend backend(options);

    auto calculator = launchApp({"gnome-calculator"});
    auto editor = launchApp({"gedit"});
    ASSERT_TRUE(calculator && editor);
    std::optional<testing::ProbedWindow> calc, edit;
    ASSERT_TRUE(testing::waitFor([&] {
        calc = windowOf(calculator->pid());
        edit = windowOf(editor->pid());
        return calc && edit;
    }));
    // The part of each window the other doesn't cover, inside its frame.
    const Rect calcArea{calc->frame.x + 10, calc->frame.y + 60, calc->frame.width - 20, 120};
    const double right = std::max(edit->frame.x, calc->frame.maxX()) + 10;
    const Rect editArea{right, edit->frame.y + 60, edit->frame.maxX() - right - 10, 300};
    auto luminance = [&](const Rect& area) { return testing::meanLuminance(area).value_or(-1); };

    const auto prior = AppearanceController::current(backend);
    ASSERT_EQ(prior, Mode::light);
    ASSERT_TRUE(testing::waitFor(
        [&] { return luminance(calcArea) > 180 && luminance(editArea) > 180; }, 10s))
        << luminance(calcArea) << " " << luminance(editArea);

    ASSERT_TRUE(AppearanceController::set(backend, Mode::dark));
    EXPECT_EQ(AppearanceController::current(backend), Mode::dark);
    EXPECT_TRUE(testing::waitFor([&] { return luminance(calcArea) < 110; }, 5s))
        << luminance(calcArea);
    EXPECT_TRUE(testing::waitFor([&] { return luminance(editArea) < 110; }, 5s))
        << luminance(editArea);

    ASSERT_TRUE(AppearanceController::set(backend, *prior));
    EXPECT_EQ(AppearanceController::current(backend), Mode::light);
    EXPECT_TRUE(testing::waitFor([&] { return luminance(calcArea) > 180; }, 5s))
        << luminance(calcArea);
    EXPECT_TRUE(testing::waitFor([&] { return luminance(editArea) > 180; }, 5s))
        << luminance(editArea);
}

TEST(GnomeAppearanceBackend, ThemeNameIsReplacedInPlaceAndOtherSettingsKept) {
    EXPECT_EQ(x11::GnomeAppearanceBackend::withThemeName(
                  "Net/ThemeName \"Adwaita\"\nNet/IconThemeName \"Adwaita\"\n", "Adwaita-dark"),
              "Net/ThemeName \"Adwaita-dark\"\nNet/IconThemeName \"Adwaita\"\n");
    EXPECT_EQ(x11::GnomeAppearanceBackend::withThemeName("Xft/DPI 98304\n", "Adwaita"),
              "Xft/DPI 98304\nNet/ThemeName \"Adwaita\"\n");
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
