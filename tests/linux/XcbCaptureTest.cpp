// The capture engine against real GTK applications on a private display: gedit (GTK3, a
// 24-bit window) and gnome-calculator (GTK4, a 32-bit window with alpha).

#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <thread>

#include "capture/CaptureEngine.h"
#include "capture/FullDisplayCapture.h"
#include "capture/RunningApps.h"
#include "capture/Spaces.h"
#include "capture/TargetLists.h"
#include "capture/WindowResizer.h"
#include "common/PlatformEnvironment.h"
#include "core/capture/CaptureTestSupport.h"
#include "linux/EwmhWindowSizingBackend.h"
#include "linux/X11ProcessWindows.h"
#include "linux/XcbCaptureBackend.h"
#include "support/ControlProbe.h"
#include "support/RunHarness.h"
#include "support/SessionFixture.h"

namespace zd::x11 {
namespace {

using testing::differingShare;
using testing::waitFor;

class XcbCaptureTest : public testing::SessionTest {
  public:
    static void SetUpTestSuite() {
        // A small screen, so that the calculator's minimum size matters for the half preset;
        // scale 1, so that points are pixels (DensitySessionTest covers scale 2).
        startSession({.width = 1024, .height = 768, .scale = 1});
        if (!sessionStarted())
            return;
        auto opened = XcbConnection::open();
        testing::ensureGuiApplication();
        auto made =
            PlatformEnvironment::create({(session().directory() / "settings.json").string()});
        if (!opened || !made)
            return;
        connection = *opened;
        platform = std::move(*made);
        gedit = launchApp({"gedit", "--new-window"});
        calculator = launchApp({"gnome-calculator"});
        clients = std::make_unique<EwmhClients>(connection);
        geditWindow = windowOf(gedit->pid());
        calculatorWindow = windowOf(calculator->pid());
    }
    static void TearDownTestSuite() {
        platform.reset();
        clients.reset();
        gedit.reset();
        calculator.reset();
        connection.reset();
        SessionTest::TearDownTestSuite();
    }

  protected:
    void SetUp() override {
        SessionTest::SetUp();
        ASSERT_TRUE(platform) << "no connection to the session's display";
        ASSERT_NE(geditWindow, 0u) << "gedit showed no window";
        ASSERT_NE(calculatorWindow, 0u) << "gnome-calculator showed no window";
    }

    // The session's own backends, with time and workers that the test drives.
    Environment env() {
        Environment e = platform->environment();
        e.clock = &clock;
        e.workers = &workers;
        return e;
    }
    static XcbCaptureBackend& capture() {
        return static_cast<XcbCaptureBackend&>(*platform->environment().capture);
    }
    static EwmhWindowSizingBackend& sizing() {
        return static_cast<EwmhWindowSizingBackend&>(*platform->environment().sizing);
    }

    // The process's first ordinary window of a useful size, once it is mapped.
    static xcb_window_t windowOf(pid_t pid) {
        const xcb_window_t found = testing::firstWindowOf(pid);
        // Let the application finish its first paint.
        std::this_thread::sleep_for(std::chrono::milliseconds(500));
        return found;
    }

    // Moves and sizes the client area, and waits until the window manager has done it.
    static bool place(xcb_window_t window, Rect frame) {
        sizing().setSize({window}, {frame.width, frame.height});
        sizing().setPosition({window}, {frame.x, frame.y});
        bool placed = waitFor([&] { return connection->rootGeometry(window) == frame; },
                              std::chrono::seconds(3));
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        return placed;
    }

    static void raise(pid_t pid) {
        activateWindowsOf(pid);
        std::this_thread::sleep_for(std::chrono::milliseconds(400));
    }

    static void toDesktop(xcb_window_t window, std::uint32_t desktop) {
        const std::uint32_t data[5] = {desktop, 2, 0, 0, 0};
        connection->sendToRoot(window, connection->atoms().netWmDesktop, data);
        waitFor(
            [&] {
                return connection->cardinal(window, connection->atoms().netWmDesktop) == desktop;
            },
            std::chrono::seconds(3));
    }

    static inline std::shared_ptr<XcbConnection> connection;
    static inline std::unique_ptr<testing::AppProcess> gedit;
    static inline std::unique_ptr<testing::AppProcess> calculator;
    static inline std::unique_ptr<EwmhClients> clients;
    static inline std::unique_ptr<PlatformEnvironment> platform;
    static inline xcb_window_t geditWindow = 0;
    static inline xcb_window_t calculatorWindow = 0;

    testing::ManualClock clock;
    testing::InlineWorkerPool workers;
};

TEST_F(XcbCaptureTest, TargetsAndRowsAreApplicationsByTheirLaunchersNameFoundWithoutAPidProperty) {
    const auto targets = RunningApps::currentTargets(env());
    for (const auto& [id, pid] :
         {std::pair{geditWindow, gedit->pid()}, std::pair{calculatorWindow, calculator->pid()}}) {
        EXPECT_TRUE(std::any_of(targets.begin(), targets.end(), [&](const CaptureTarget& t) {
            return t.id == id && t.pid == pid && !t.appName.empty();
        })) << id;
    }
    // xmessage sets no _NET_WM_PID: the X server still knows its process.
    auto message = launchApp({"xmessage", "-geometry", "300x120+40+40", "Hello"});
    xcb_window_t messageWindow = 0;
    ASSERT_TRUE(waitFor([&] {
        for (const auto& c : clients->clients()) {
            if (c.pid == message->pid())
                messageWindow = c.id;
        }
        return messageWindow != 0;
    }));
    std::vector<CompositeEntry> rows;
    auto row = [&](xcb_window_t id) -> const CompositeEntry* {
        auto it = std::find_if(rows.begin(), rows.end(),
                               [&](const CompositeEntry& r) { return r.id == id; });
        return it == rows.end() ? nullptr : &*it;
    };
    TargetLists::reloadCompositeWindows(env(), 0, rows);
    for (const auto& each : rows)
        EXPECT_TRUE(each.enabled);
    EXPECT_TRUE(row(messageWindow));
    ASSERT_TRUE(row(calculatorWindow));
    EXPECT_EQ(row(calculatorWindow)->appName, "Calculator") << "its desktop file's Name";

    // Kept out of the task bar, it is a panel's window, not an application's.
    const xcb_atom_t skip = testing::atom("_NET_WM_STATE_SKIP_TASKBAR");
    const std::uint32_t add[5] = {1, skip, 0, 2, 0};  // _NET_WM_STATE_ADD, as a pager asks
    connection->sendToRoot(messageWindow, connection->atoms().netWmState, add);
    EXPECT_TRUE(waitFor(
        [&] {
            rows.clear();
            TargetLists::reloadCompositeWindows(env(), 0, rows);
            return !row(messageWindow);
        },
        std::chrono::seconds(3)));
}

TEST_F(XcbCaptureTest, ACoveredOrPartlyOffScreenWindowIsCapturedAloneAtItsOwnSize) {
    ASSERT_TRUE(place(geditWindow, {100, 100, 600, 400}));
    ASSERT_TRUE(place(calculatorWindow, {200, 150, 400, 520}));
    // Covered before its first capture: the window's own pixmap is filled by its repaint.
    raise(calculator->pid());
    auto covered =
        testing::runToEnd(CaptureEngine::captureWindow(env(), CaptureTarget{geditWindow}));
    ASSERT_TRUE(covered) << covered.error().systemMessage;
    EXPECT_EQ(covered->width(), 600);
    EXPECT_EQ(covered->height(), 400);

    raise(gedit->pid());
    auto uncovered =
        testing::runToEnd(CaptureEngine::captureWindow(env(), CaptureTarget{geditWindow}));
    ASSERT_TRUE(uncovered);
    EXPECT_LT(differingShare(*uncovered, *covered, 16), 0.02) << "the calculator shows through";

    ASSERT_TRUE(place(geditWindow, {-300, 100, 600, 400}));
    auto offScreen =
        testing::runToEnd(CaptureEngine::captureWindow(env(), CaptureTarget{geditWindow}));
    ASSERT_TRUE(offScreen);
    EXPECT_LT(differingShare(*uncovered, *offScreen, 16), 0.02);

    auto gone = testing::runToEnd(CaptureEngine::captureWindow(env(), CaptureTarget{0x7fffff}));
    EXPECT_TRUE(!gone && gone.error().is(CaptureError::windowNotFound));
}

// A window of this process with a 32-bit visual, filled with half-transparent blue.
xcb_window_t createTranslucentWindow(XcbConnection& x) {
    xcb_connection_t* c = x.get();
    xcb_visualid_t visual = 0;
    for (auto depths = xcb_screen_allowed_depths_iterator(x.screen()); depths.rem && !visual;
         xcb_depth_next(&depths)) {
        if (depths.data->depth != 32)
            continue;
        auto visuals = xcb_depth_visuals_iterator(depths.data);
        if (visuals.rem)
            visual = visuals.data->visual_id;
    }
    if (!visual)
        return 0;
    xcb_colormap_t colormap = xcb_generate_id(c);
    xcb_create_colormap(c, XCB_COLORMAP_ALLOC_NONE, colormap, x.root(), visual);
    xcb_window_t window = xcb_generate_id(c);
    const std::uint32_t values[] = {0x80000080u, 0, colormap};
    xcb_create_window(c, 32, window, x.root(), 300, 200, 200, 150, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      visual, XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_COLORMAP, values);
    const auto pid = static_cast<std::uint32_t>(getpid());
    xcb_change_property(c, XCB_PROP_MODE_REPLACE, window, x.atoms().netWmPid, XCB_ATOM_CARDINAL, 32,
                        1, &pid);
    xcb_map_window(c, window);
    xcb_flush(c);
    return window;
}

TEST_F(XcbCaptureTest, A32BitWindowKeepsItsAlphaAndOurOwnWindowIsNoTarget) {
    xcb_window_t own = createTranslucentWindow(*connection);
    ASSERT_NE(own, 0u) << "the display offers no 32-bit visual";
    ASSERT_TRUE(waitFor([&] {
        auto all = clients->clients();
        return std::any_of(all.begin(), all.end(),
                           [&](const ClientWindow& w) { return w.id == own; });
    }));
    auto pixels = capture().windowPixels(own);
    auto targets = RunningApps::currentTargets(env());
    xcb_destroy_window(connection->get(), own);
    xcb_flush(connection->get());

    ASSERT_TRUE(pixels) << pixels.error().systemMessage;
    EXPECT_EQ(pixels->width(), 200);
    EXPECT_EQ(pixels->pixel(100, 75), 0x80000080u);
    EXPECT_TRUE(std::none_of(targets.begin(), targets.end(),
                             [&](const CaptureTarget& t) { return t.id == own; }));
}

// A panel of this process along the top edge, `height` tall, that the work area leaves out.
xcb_window_t createTopPanel(XcbConnection& x, std::uint32_t height) {
    xcb_connection_t* c = x.get();
    xcb_window_t window = xcb_generate_id(c);
    xcb_create_window(c, XCB_COPY_FROM_PARENT, window, x.root(), 0, 0, x.screen()->width_in_pixels,
                      static_cast<std::uint16_t>(height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      XCB_COPY_FROM_PARENT, 0, nullptr);
    const xcb_atom_t dock = x.atoms().netWmWindowTypeDock;
    xcb_change_property(c, XCB_PROP_MODE_REPLACE, window, x.atoms().netWmWindowType, XCB_ATOM_ATOM,
                        32, 1, &dock);
    const std::uint32_t strut[12] = {0, 0, height, 0, 0, 0, 0, 0, 0, x.screen()->width_in_pixels,
                                     0, 0};
    xcb_change_property(c, XCB_PROP_MODE_REPLACE, window, testing::atom("_NET_WM_STRUT_PARTIAL"),
                        XCB_ATOM_CARDINAL, 32, 12, strut);
    xcb_map_window(c, window);
    xcb_flush(c);
    return window;
}

TEST_F(XcbCaptureTest, EachPresetSizesTheWindowWithinTheWorkAreaKeepingItsMinimum) {
    xcb_window_t panel = createTopPanel(*connection, 40);
    std::optional<ScreenInfo> screen;
    EXPECT_TRUE(waitFor([&] {
        screen = env().screens->mainScreen();
        return screen && screen->visibleFrame == Rect{0, 40, 1024, 728};
    })) << "the work area leaves the panel out";
    auto panelRecord = env().windowList->windowList(WindowListOption::allWindows);
    ASSERT_TRUE(screen);
    const Rect work = screen->visibleFrame;
    bool panelOnDockLayer = false;
    for (const Value& record : *panelRecord.asArray()) {
        if (record.find(WindowKey::number)->asInteger() == panel) {
            panelOnDockLayer = record.find(WindowKey::layer)->asInteger() == Layer::dock;
        }
    }
    EXPECT_TRUE(panelOnDockLayer);
    EXPECT_GT(sizing().allowedSize(calculatorWindow, {1, 1}).height, 384)
        << "the calculator is taller than half this screen";
    raise(calculator->pid());
    for (auto preset : {WindowSizePreset::half, WindowSizePreset::threeQ, WindowSizePreset::full}) {
        SCOPED_TRACE(std::string(title(preset)));
        const Rect computed =
            *WindowResizer::targetFrame(preset, work, screen->frame.height, false);
        WindowResizer::apply(env(), preset, calculator->pid());
        // GTK 4 sets its minimum height anew for each width, so the minimum is read once the
        // window has taken the new width.
        Rect expected = computed;
        std::optional<Rect> actual;
        waitFor(
            [&] {
                const Size minimum = sizing().allowedSize(calculatorWindow, {1, 1});
                expected.width = std::max(computed.width, minimum.width);
                expected.height = std::max(computed.height, minimum.height);
                actual = connection->rootGeometry(calculatorWindow);
                return actual && std::abs(actual->width - expected.width) <= 1 &&
                       std::abs(actual->height - expected.height) <= 1 &&
                       std::abs(actual->x - expected.x) <= 1 &&
                       std::abs(actual->y - expected.y) <= 1;
            },
            std::chrono::seconds(3));
        ASSERT_TRUE(actual);
        EXPECT_NEAR(actual->width, expected.width, 1);
        EXPECT_NEAR(actual->height, expected.height, 1);
        EXPECT_NEAR(actual->x, expected.x, 1);
        EXPECT_NEAR(actual->y, expected.y, 1);
        EXPECT_GE(actual->x, work.x);
        EXPECT_GE(actual->y, work.y);
        EXPECT_LE(actual->maxX(), work.maxX());
        EXPECT_LE(actual->maxY(), work.maxY());
    }
    xcb_destroy_window(connection->get(), panel);
    xcb_flush(connection->get());
}

TEST_F(XcbCaptureTest, DesktopsAreSpacesAndAChosenOneNarrowsTheLists) {
    auto desktops = Spaces::userSpaces(*env().spaces);
    ASSERT_GE(desktops.size(), 2u);
    EXPECT_EQ(desktops[0].ordinal, 1);
    EXPECT_TRUE(desktops[0].isCurrent);
    EXPECT_EQ(desktops[1].ordinal, 2);

    toDesktop(calculatorWindow, 1);
    std::vector<CaptureTarget> targets;
    std::optional<std::uint32_t> selected;
    TargetLists::reloadTargets(env(), desktops[1].id, targets, selected);
    std::vector<CompositeEntry> rows;
    TargetLists::reloadCompositeWindows(env(), desktops[1].id, rows);
    toDesktop(calculatorWindow, 0);

    ASSERT_EQ(targets.size(), 1u);
    EXPECT_EQ(targets[0].id, calculatorWindow);
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].id, calculatorWindow);
    TargetLists::reloadTargets(env(), desktops[0].id, targets, selected);
    EXPECT_GE(targets.size(), 2u);
}

TEST_F(XcbCaptureTest, TwoWindowsArePaintedAtTheirPositionsWithTransparentGaps) {
    // gedit is at least 489 wide; the stack's shadows reach about 80 pixels out.
    ASSERT_TRUE(place(geditWindow, {10, 50, 489, 300}));
    ASSERT_TRUE(place(calculatorWindow, {660, 100, 360, 520}));
    std::vector<CompositeEntry> rows;
    TargetLists::reloadCompositeWindows(env(), 0, rows);
    CaptureEngine::CaptureRecords records;
    auto layout =
        testing::runToEnd(CaptureEngine::buildLayoutFromCompositeWindows(env(), rows, records));
    ASSERT_TRUE(layout);
    auto image = testing::runToEnd(CaptureEngine::captureFullDisplay(env(), *layout, records));
    ASSERT_TRUE(image);
    ASSERT_EQ(image->width(), 1024);
    ASSERT_EQ(image->height(), 768);
    EXPECT_TRUE(records.lastSkippedWindowNames.empty());
    ASSERT_EQ(records.lastCaptureOutcomes.size(), 2u);

    auto alphaAt = [&](double x, double y) {
        return Image::alphaOf(image->pixel(static_cast<int>(x), static_cast<int>(y)));
    };
    EXPECT_EQ(alphaAt(250, 200), 255u) << "gedit's middle";
    EXPECT_EQ(alphaAt(840, 360), 255u) << "the calculator's middle";
    EXPECT_EQ(alphaAt(580, 200), 0u) << "the gap between them";
    EXPECT_EQ(alphaAt(300, 700), 0u) << "below gedit";
    EXPECT_EQ(alphaAt(1000, 740), 0u) << "the far corner";
}

}  // namespace
}  // namespace zd::x11
