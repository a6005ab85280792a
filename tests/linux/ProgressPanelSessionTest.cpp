// The progress panel on a real X11 desktop (Xvfb + openbox): it comes up above the target
// without taking the activation from it, on every desktop, at the core's origin, goes back
// there at the next show, and doesn't keep the program alive once the main window closes.

#include <sys/stat.h>

#include <gtest/gtest.h>

#include <fstream>

#include "linux/XcbConnection.h"
#include "support/ControlProbe.h"
#include "support/SessionFixture.h"
#include "ui/ProgressPanelRules.h"

namespace zd {
namespace {

using namespace std::chrono_literals;

class ProgressPanelInSession : public testing::SessionTest {
  public:
    static void SetUpTestSuite() {
        x11::HeadlessSession::Options options;
        options.width = 1440;
        options.height = 900;
        options.scale = 1;  // the panel's frame is checked in pixels
        startSession(options);
    }
};

std::optional<testing::ProbedWindow> find(
    const std::function<bool(const testing::ProbedWindow&)>& which,
    std::size_t* stackIndex = nullptr) {
    const auto windows = testing::probeWindows();
    for (std::size_t i = 0; i < windows.size(); ++i) {
        if (windows[i].viewable && which(windows[i])) {
            if (stackIndex)
                *stackIndex = i;
            return windows[i];
        }
    }
    return std::nullopt;
}

TEST_F(ProgressPanelInSession, FloatsAboveTheActiveTargetOnEveryDesktopAndEndsWithTheProgram) {
    const std::string fifo = (session().directory() / "panel-commands").string();
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    auto program = launchApp({ZD_BINARY_DIR "/bin/zd_panel_probe", fifo});
    ASSERT_TRUE(program);
    auto byTitle = [](const char* title) {
        return [title](const testing::ProbedWindow& w) { return w.title == title; };
    };
    std::optional<testing::ProbedWindow> mainWindow;
    ASSERT_TRUE(
        testing::waitFor([&] { return (mainWindow = find(byTitle("Panel probe"))).has_value(); }));

    auto connection = x11::XcbConnection::open();
    ASSERT_TRUE(connection);
    auto x = *connection;
    auto editor = launchApp({"gedit"});
    ASSERT_TRUE(editor);
    ASSERT_TRUE(testing::waitFor([&] { return testing::activeWindowPid() == editor->pid(); }));

    std::ofstream commands(fifo);
    commands << "show" << std::endl;
    std::size_t panelIndex = 0;
    std::size_t editorIndex = 0;
    std::optional<testing::ProbedWindow> panel;
    ASSERT_TRUE(testing::waitFor(
        [&] { return (panel = find(byTitle("Zephyrdock progress"), &panelIndex)).has_value(); }));
    ASSERT_TRUE(find([&](const auto& w) { return w.pid == editor->pid(); }, &editorIndex));

    EXPECT_EQ(testing::activeWindowPid(), editor->pid());  // the target keeps the activation
    EXPECT_LT(panelIndex, editorIndex);                    // front-most first
    EXPECT_EQ(x->cardinal(panel->id, x->atoms().netWmDesktop), 0xFFFFFFFFu);
    const Point origin = ProgressPanelRules::panelOrigin({0, 0, 1440, 900}, false);
    EXPECT_EQ(panel->frame, (Rect{origin.x, origin.y, 540, 64}));
    EXPECT_EQ(origin, (Point{450, 638}));

    // Moved away (as a user or the window manager might), the next show puts it back.
    const std::uint32_t moveXY = (1u << 8) | (1u << 9) | (2u << 12);  // x, y; from a pager
    x->sendToRoot(panel->id, x->atoms().netMoveresizeWindow, {moveXY, 20, 30, 0, 0});
    ASSERT_TRUE(testing::waitFor([&] {
        const auto moved = find(byTitle("Zephyrdock progress"));
        return moved && moved->frame.x == 20;
    }));
    commands << "show" << std::endl;
    EXPECT_TRUE(testing::waitFor([&] {
        const auto back = find(byTitle("Zephyrdock progress"));
        return back && back->frame == Rect{origin.x, origin.y, 540, 64};
    }));
    EXPECT_EQ(testing::activeWindowPid(), editor->pid());

    // No compositor runs here: the capsule cuts its own corners, so the (light) main window
    // brought beneath shows there instead of black.
    const std::uint32_t moveResize = moveXY | (1u << 10) | (1u << 11);
    x->sendToRoot(mainWindow->id, x->atoms().netMoveresizeWindow, {moveResize, 400, 600, 640, 200});
    x->sendToRoot(mainWindow->id, x->atoms().netActiveWindow, {2, XCB_CURRENT_TIME, 0, 0, 0});
    const Rect corner{origin.x, origin.y, 3, 3};
    const Rect pill{origin.x + 100, origin.y + 4, 20, 3};
    auto luminance = [](const Rect& area) {
        return testing::meanLuminance(testing::rootPixels(area));
    };
    EXPECT_TRUE(testing::waitFor([&] { return luminance(corner) > 150; }, 5s)) << luminance(corner);
    EXPECT_LT(luminance(pill), 80);

    // Closing the main window ends the program, the panel still up.
    x->sendToRoot(mainWindow->id, testing::atom("_NET_CLOSE_WINDOW"), {0, 2, 0, 0, 0});
    EXPECT_TRUE(testing::waitFor([&] { return !program->running(); }));
}

}  // namespace
}  // namespace zd
