// Pictures true to the screen: on a headless desktop at scale 1 and at scale 2, mousepad (a
// window that openbox decorates) is sized by each preset, captured and composed onto a
// 2880 × 1800 canvas, and the pixels are measured: the window keeps its share of the screen's
// width, nothing of it is cut, its title bar is in the picture, and the capture is the
// screen's own pixels (no upsampling blur). The full-display bar follows the same density.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <thread>

#include "capture/CaptureEngine.h"
#include "capture/FullDisplayCapture.h"
#include "capture/WindowResizer.h"
#include "common/PlatformEnvironment.h"
#include "composition/Compositor.h"
#include "core/capture/CaptureTestSupport.h"
#include "linux/X11ProcessWindows.h"
#include "linux/XcbCaptureBackend.h"
#include "support/ControlProbe.h"
#include "support/RunHarness.h"
#include "support/SessionFixture.h"

namespace zd::x11 {
namespace {

using testing::differingShare;
using testing::waitFor;

Image crop(const Image& image, int left, int top, int width, int height) {
    Image part(width, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            part.setPixel(x, y, image.pixel(left + x, top + y));
    return part;
}

// First and last column of the canvas's row `y` (top-down) that hold anything.
std::pair<int, int> opaqueSpan(const Image& canvas, int y) {
    int first = -1;
    int last = -1;
    for (int x = 0; x < canvas.width(); ++x) {
        if (Image::alphaOf(canvas.pixel(x, y)) > 128) {
            if (first < 0)
                first = x;
            last = x;
        }
    }
    return {first, last};
}

class DensitySession : public ::testing::TestWithParam<int> {};

TEST_P(DensitySession, WindowKeepsItsShareIsWholeAndSharpAndTheBarsFollowTheDensity) {
    const int scale = GetParam();
    testing::ensureGuiApplication();  // the menu bar's fonts
    auto started = HeadlessSession::start({.scale = scale});
    ASSERT_TRUE(started) << started.error();
    HeadlessSession& session = **started;
    session.applyToCurrentProcess();
    auto opened = XcbConnection::open();
    ASSERT_TRUE(opened) << opened.error();
    std::shared_ptr<XcbConnection> x = *opened;
    EXPECT_DOUBLE_EQ(x->scale(), scale) << "the session's scale, as its toolkits are told";

    auto app = testing::launchInSession(session, {"mousepad"});
    EwmhClients clients(x);
    const xcb_window_t window = testing::firstWindowOf(app->pid());
    ASSERT_NE(window, 0u) << "mousepad showed no window";

    auto made = PlatformEnvironment::create({(session.directory() / "settings.json").string()});
    ASSERT_TRUE(made) << made.error();
    testing::ManualClock clock;
    testing::InlineWorkerPool workers;
    Environment env = (*made)->environment();
    env.clock = &clock;
    env.workers = &workers;
    auto& capture = static_cast<XcbCaptureBackend&>(*env.capture);
    const auto screen = env.screens->mainScreen();
    ASSERT_TRUE(screen);
    EXPECT_EQ(screen->frame.width, 1440) << "points, whatever the scale";
    const Compositor::Platform platform{*env.canvases, *env.images, screen, 24.0};

    for (WindowSizePreset preset : {WindowSizePreset::current, WindowSizePreset::half,
                                    WindowSizePreset::threeQ, WindowSizePreset::full}) {
        SCOPED_TRACE(std::string(rawValue(preset)) + " at scale " + std::to_string(scale));
        activateWindowsOf(app->pid());
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        WindowResizer::apply(env, preset, app->pid());
        std::this_thread::sleep_for(std::chrono::milliseconds(700));
        const Rect bounds = *clients.describe(window).bounds;  // points, frame included
        if (preset != WindowSizePreset::current) {
            const Rect wanted = *WindowResizer::targetFrame(preset, screen->visibleFrame,
                                                            screen->frame.height, false);
            EXPECT_NEAR(bounds.width, wanted.width, 2) << "the decorated frame has the size";
            EXPECT_NEAR(bounds.height, wanted.height, 2);
            EXPECT_NEAR(bounds.midX(), wanted.midX(), 2) << "and is centred";
            EXPECT_NEAR(bounds.midY(), wanted.midY(), 2);
        }
        auto picture = testing::runToEnd(CaptureEngine::captureWindow(env, CaptureTarget{window}));
        ASSERT_TRUE(picture) << picture.error().systemMessage;
        EXPECT_EQ(picture->pixelsPerPoint(), scale);
        EXPECT_NEAR(picture->width(), bounds.width * scale, 1) << "the screen's pixels, no more";
        EXPECT_NEAR(picture->height(), bounds.height * scale, 1);

        Compositor::Inputs inputs;
        inputs.windowImage = *picture;
        inputs.canvas = {2880, 1800};
        inputs.background.kind = BackgroundKind::transparent;
        inputs.applyShadow = false;
        const Image shot = Compositor::render(inputs, platform);
        const Compositor::Layout placed = Compositor::layout(inputs, screen, 24.0);
        const int middle = static_cast<int>(1800 - placed.destination.midY());
        const auto [first, last] = opaqueSpan(shot, middle);
        EXPECT_NEAR((last - first + 1) / 2880.0, bounds.width / screen->frame.width, 0.01)
            << "the window's share of the canvas is its share of the screen";
        EXPECT_GT(first, 0) << "nothing cut on the left";
        EXPECT_LT(last, 2879) << "nothing cut on the right";
        EXPECT_GE(placed.destination.y, 0);
        EXPECT_LE(placed.destination.maxY(), placed.availableHeight) << "nothing under the bar";
        EXPECT_NEAR(placed.barHeight, 1800 * 24.0 / 900, 0.5);
    }

    // The window as the user sees it: openbox's title bar above the client's own pixels.
    auto picture = testing::runToEnd(CaptureEngine::captureWindow(env, CaptureTarget{window}));
    ASSERT_TRUE(picture);
    const Extents frame = clients.frameExtents(window);
    ASSERT_GT(frame.top, 10) << "openbox decorates mousepad";
    auto client = capture.windowPixels(window);
    ASSERT_TRUE(client);
    const int top = static_cast<int>(frame.top);
    const int left = static_cast<int>(frame.left);
    const int w = client->width();
    EXPECT_EQ(picture->height(), client->height() + top + static_cast<int>(frame.bottom));
    EXPECT_LT(differingShare(crop(*picture, left, top, w, 40), crop(*client, 0, 0, w, 40), 8), 0.01)
        << "the client sits under the title bar";
    EXPECT_GT(
        differingShare(crop(*picture, left, 0, w, top / 2), crop(*client, 0, 0, w, top / 2), 8),
        0.3)
        << "the title bar is in the picture";

    // Sharp: the capture is the very pixels on the screen.
    const Rect shown = clients.footprint(window).value_or(Footprint{}).visible;
    if (shown.x >= 0 && shown.y >= 0 && shown.maxX() <= x->screen()->width_in_pixels &&
        shown.maxY() <= x->screen()->height_in_pixels) {
        EXPECT_LT(differingShare(*picture, testing::rootPixels(shown), 8), 0.01);
    } else {
        ADD_FAILURE() << "the full preset left the window off the screen";
    }

    // The multiple-windows picture: the display at its density, its bar in proportion.
    auto content = capture.shareableContent();
    ASSERT_TRUE(content);
    const ShareableDisplay display = content->displays.front();
    std::vector<CaptureEngine::StackedWindow> stack{{*picture, *clients.describe(window).bounds}};
    const Image desktop = CaptureEngine::paintStack(*env.canvases, display, stack);
    EXPECT_EQ(desktop.width(), 1440 * scale);
    Compositor::Inputs full;
    full.windowImage = desktop;
    full.canvas = {1440, 900};
    full.isFullDisplayCapture = true;
    EXPECT_NEAR(Compositor::layout(full, screen, 24.0).barHeight, 24.0, 0.01);
}

INSTANTIATE_TEST_SUITE_P(Scales, DensitySession, ::testing::Values(1, 2));

}  // namespace
}  // namespace zd::x11
