#include "linux/HeadlessSession.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <xcb/xcb.h>

#include <cstdlib>

#include "support/SessionFixture.h"

namespace zd::x11 {
namespace {

TEST(HeadlessSession, StartsAPrivateDesktopAndEndsEveryProcessItStarted) {
    const char* before = std::getenv("DISPLAY");
    std::string displayBefore = before ? before : "";
    std::filesystem::path dir;
    pid_t settingsPid = 0;
    {
        auto started = HeadlessSession::start();
        ASSERT_TRUE(started) << started.error();
        auto& session = **started;
        dir = session.directory();
        settingsPid = session.settingsDaemonPid();
        EXPECT_TRUE(std::filesystem::is_directory(dir));
        EXPECT_GT(settingsPid, 0);

        session.applyToCurrentProcess();
        EXPECT_EQ(std::getenv("DISPLAY"), session.display());
        xcb_connection_t* c = xcb_connect(nullptr, nullptr);
        EXPECT_FALSE(xcb_connection_has_error(c));
        xcb_disconnect(c);

        // gsettings reaches dconf through the session's bus and writes into the session folder.
        auto app = testing::launchInSession(
            session,
            {"gsettings", "set", "org.gnome.desktop.interface", "color-scheme", "prefer-dark"});
        ASSERT_TRUE(app);
        EXPECT_TRUE(testing::waitFor([&] { return !app->running(); }));
        EXPECT_TRUE(testing::waitFor(
            [&] { return std::filesystem::exists(dir / "config" / "dconf" / "user"); }));
        EXPECT_TRUE(session.reloadSettings());
    }
    EXPECT_FALSE(std::filesystem::exists(dir));
    EXPECT_NE(kill(settingsPid, 0), 0);
    const char* after = std::getenv("DISPLAY");
    EXPECT_EQ(after ? after : "", displayBefore);
}

}  // namespace
}  // namespace zd::x11
