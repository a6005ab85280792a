#include "composition/Placeholders.h"

#include <gtest/gtest.h>

#include <limits>

#include "composition/TileRenderer.h"
#include "testing/FakeImageCodec.h"
#include "testing/RecordingCanvas.h"

namespace zd {
namespace {

using Kind = CanvasCall::Kind;

TEST(Placeholders, CachedPerAppearanceAndTruncatedSizeAndNoneForAnUnusableSize) {
    RecordingCanvasFactory canvases;
    Placeholders placeholders(canvases);
    EXPECT_EQ(Placeholders::cacheKey(AppearanceMode::light, {2782.08, 1699.2}), "light-2782x1699");

    const Image first = placeholders.window(AppearanceMode::light, {800.4, 600});
    const Image second = placeholders.window(AppearanceMode::light, {800.9, 600.2});
    const Image dark = placeholders.window(AppearanceMode::dark, {800, 600});
    EXPECT_EQ(first.storageId(), second.storageId());
    EXPECT_NE(first.storageId(), dark.storageId());
    EXPECT_EQ(canvases.records().size(), 2u);
    EXPECT_EQ(first.width(), 800);

    const Image desk = placeholders.fullDisplay(AppearanceMode::light, {800, 600});
    EXPECT_NE(desk.storageId(), first.storageId());  // a cache of its own
    EXPECT_EQ(placeholders.fullDisplay(AppearanceMode::light, {800, 600}).storageId(),
              desk.storageId());

    // A size that can't be a picture gives none.
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_TRUE(placeholders.window(AppearanceMode::dark, {nan, 10}).isNull());
    EXPECT_TRUE(placeholders.fullDisplay(AppearanceMode::dark, {1e30, 10}).isNull());
    EXPECT_TRUE(placeholders.window(AppearanceMode::dark, {0.5, 10}).isNull());
}

TEST(Placeholders, WindowDrawingScalesWithTheHeight) {
    RecordingCanvas canvas(1600, 1000);
    Placeholders::drawWindow(canvas, AppearanceMode::light, {1600, 1000});
    const auto& record = canvas.record();

    const auto rounded = record.callsOf(Kind::fillRoundedRect);
    ASSERT_EQ(rounded.size(), 13u);  // body and all twelve text bars
    EXPECT_EQ(rounded[0].rect, (Rect{0, 0, 1600, 1000}));
    EXPECT_EQ(rounded[0].number, 18);
    EXPECT_EQ(rounded[0].color, Color::white(0.99));
    const std::vector<double> widths{600, 920, 760, 1080, 540, 880, 700, 1020, 620, 800, 720, 540};
    for (std::size_t row = 0; row < 12; ++row) {
        EXPECT_EQ(rounded[row + 1].rect,
                  (Rect{60, 884.0 - 56.0 * static_cast<double>(row), widths[row], 14}));
        EXPECT_EQ(rounded[row + 1].number, 4);
        EXPECT_EQ(rounded[row + 1].color, Color::black(0.16));
    }
    EXPECT_EQ(rounded.back().rect.y, 268);

    const auto fills = record.callsOf(Kind::fillRect);
    ASSERT_EQ(fills.size(), 2u);
    EXPECT_EQ(fills[0].rect, (Rect{0, 944, 1600, 56}));
    EXPECT_EQ(fills[1].rect, (Rect{0, 944, 1600, 1}));
    ASSERT_EQ(record.callsOf(Kind::clipToRoundedRect).size(), 1u);

    const auto buttons = record.callsOf(Kind::fillEllipse);
    ASSERT_EQ(buttons.size(), 3u);
    EXPECT_EQ(buttons[0].rect, (Rect{24, 965, 14, 14}));
    EXPECT_EQ(buttons[1].rect.x, 48);
    EXPECT_EQ(buttons[2].rect.x, 72);
    EXPECT_EQ(buttons[0].color, (Color{1.0, 0.37, 0.34, 1.0}));
    EXPECT_EQ(buttons[2].color, (Color{0.2, 0.78, 0.27, 1.0}));
}

TEST(Placeholders, SmallWindowKeepsALineOfOnePixel) {
    RecordingCanvas canvas(300, 400);
    Placeholders::drawWindow(canvas, AppearanceMode::dark, {300, 400});
    const auto fills = canvas.record().callsOf(Kind::fillRect);
    EXPECT_DOUBLE_EQ(fills[1].rect.height, 1.0);
    EXPECT_EQ(fills[1].color, Color::white(1.0, 0.18));
    EXPECT_EQ(fills[0].color, Color::white(0.18));
}

TEST(Placeholders, DesktopHasTwoShadowedWindows) {
    RecordingCanvasFactory canvases;
    Placeholders placeholders(canvases);
    placeholders.fullDisplay(AppearanceMode::light, {3000, 1800});
    // Made in order: the desktop, then the back and the front window drawn on it.
    ASSERT_EQ(canvases.records().size(), 3u);
    EXPECT_EQ(std::pair(canvases.records()[1]->width, canvases.records()[1]->height),
              std::pair(1200, 810));
    EXPECT_EQ(std::pair(canvases.records()[2]->width, canvases.records()[2]->height),
              std::pair(1500, 990));
    const auto draws = canvases.records()[0]->callsOf(Kind::drawImage);
    ASSERT_EQ(draws.size(), 2u);
    EXPECT_EQ(draws[0].rect, (Rect{0.5 * 3000, 0.06 * 1800, 1200, 810}));
    EXPECT_EQ(draws[1].rect, (Rect{0.06 * 3000, 0.12 * 1800, 1500, 990}));
    const Shadow expected{{0, -20}, 60, Color::black(0.45)};
    EXPECT_EQ(draws[0].shadow, expected);
    EXPECT_EQ(draws[1].shadow, expected);
    EXPECT_TRUE(canvases.records()[0]->callsOf(Kind::fillRect).empty());  // desktop transparent
}

class RenderTile : public ::testing::Test {
  protected:
    RenderTile() {
        state.placeholderWindowSize = {1440, 900};
        state.lightBackground = {BackgroundKind::color, std::nullopt, {1, 1, 1, 1}};
        state.darkBackground = {BackgroundKind::color, std::nullopt, {0, 0, 0, 1}};
        state.menuBar.menuTitles = {"Configured"};
    }
    RecordingCanvasFactory canvases;
    FakeImageCodec codec;
    Placeholders placeholders{canvases};
    TileState state;
};

TEST_F(RenderTile, PlaceholderFollowsTheScopeAndTheEntrysMode) {
    auto inputs = tileInputs(AppearanceMode::dark, nullptr, {720, 450}, state, placeholders);
    EXPECT_FALSE(inputs.isFullDisplayCapture);
    EXPECT_EQ(inputs.windowImage.storageId(),
              placeholders.window(AppearanceMode::dark, {1440, 900}).storageId());
    EXPECT_EQ(inputs.background.fillColor, (Color{0, 0, 0, 1}));
    EXPECT_EQ(inputs.menuBar.menuTitles, std::vector<std::string>{"Configured"});

    state.captureScope = CaptureScope::allWindows;
    inputs = tileInputs(AppearanceMode::light, nullptr, {720, 450}, state, placeholders);
    EXPECT_TRUE(inputs.isFullDisplayCapture);
    EXPECT_EQ(inputs.windowImage.storageId(),
              placeholders.fullDisplay(AppearanceMode::light, {1440, 900}).storageId());
}

TEST_F(RenderTile, RealShotAndDetectedTitlesWin) {
    CapturedShot shot;
    shot.image = Image(10, 10);
    shot.isFullDisplay = true;
    shot.mode = AppearanceMode::light;
    state.detectedMenuTitles = {"Ablage", "Bearbeiten"};
    state.windowShadow = false;
    state.capturedMenuBarImage = Image(20, 2);
    state.statusItemsLeftFraction = 0.7;
    const auto inputs = tileInputs(AppearanceMode::light, &shot, {2880, 1800}, state, placeholders);
    EXPECT_EQ(inputs.windowImage.storageId(), shot.image.storageId());
    EXPECT_TRUE(inputs.isFullDisplayCapture);
    EXPECT_EQ(inputs.menuBar.menuTitles, state.detectedMenuTitles);
    EXPECT_FALSE(inputs.applyShadow);
    EXPECT_EQ(inputs.capturedMenuBar->storageId(), state.capturedMenuBarImage->storageId());
    EXPECT_EQ(inputs.statusItemsLeftFraction, 0.7);
    EXPECT_TRUE(canvases.records().empty());  // no placeholder drawn

    const Image tile = renderTile(AppearanceMode::light, &shot, {2880, 1800}, state, placeholders,
                                  {canvases, codec, std::nullopt, 24});
    EXPECT_EQ(tile.width(), 2880);
}

// A tile is the saved picture in small: the window (or desktop) takes the same share of the
// canvas and the bar the same share of its height, on a screen of scale 1 as of scale 2.
struct TileCase {
    double scale;
    bool fullDisplay;
};
class TileMatchesShot : public RenderTile, public ::testing::WithParamInterface<TileCase> {};

TEST_P(TileMatchesShot, InRelativeSizeAndBarHeight) {
    const auto [scale, fullDisplay] = GetParam();
    const ScreenInfo screen{{0, 0, 1440, 900}, {0, 25, 1440, 875}, scale};
    state.mainScreen = screen;
    state.captureScope = fullDisplay ? CaptureScope::allWindows : CaptureScope::singleWindow;
    // What the run gives the window (half the visible area) or the desktop, captured at the
    // screen's density.
    state.placeholderWindowSize = fullDisplay ? Size{3024, 1890} : Size{scale * 720, scale * 437.5};
    CapturedShot shot;
    shot.isFullDisplay = fullDisplay;
    shot.image = fullDisplay
                     ? Image(static_cast<int>(1440 * scale), static_cast<int>(900 * scale))
                     : Image(static_cast<int>(720 * scale), static_cast<int>(437.5 * scale));
    shot.image.setPixelsPerPoint(scale);

    const Size output{2880, 1800};
    const Size tileCanvas = previewTileCanvas(output);
    const auto saved = Compositor::layout(
        tileInputs(AppearanceMode::light, &shot, output, state, placeholders), screen, 24);
    const auto tile = Compositor::layout(
        tileInputs(AppearanceMode::light, nullptr, tileCanvas, state, placeholders), screen, 24);
    EXPECT_NEAR(tile.destination.width / tileCanvas.width, saved.destination.width / output.width,
                0.002);
    EXPECT_NEAR(tile.barHeight / tileCanvas.height, saved.barHeight / output.height, 0.002);
    EXPECT_NEAR(saved.barHeight, 48, 0.01) << "24 points of 900, on 1800 pixels";
    if (!fullDisplay) {
        EXPECT_NEAR(saved.destination.width / output.width, 0.5, 0.002) << "half the screen";
    }
}

INSTANTIATE_TEST_SUITE_P(Screens, TileMatchesShot,
                         ::testing::Values(TileCase{1, false}, TileCase{2, false},
                                           TileCase{1, true}, TileCase{2, true}));

TEST(PreviewTileCanvas, LongSideAtMost720NeverEnlarged) {
    EXPECT_EQ(previewTileCanvas({2880, 1800}), (Size{720, 450}));
    EXPECT_EQ(previewTileCanvas({900, 1440}), (Size{450, 720}));
    EXPECT_EQ(previewTileCanvas({640, 400}), (Size{640, 400}));
}

}  // namespace
}  // namespace zd
