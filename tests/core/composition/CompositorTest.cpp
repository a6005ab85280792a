#include "composition/Compositor.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <limits>

#include "composition/MenuBarRenderer.h"
#include "env/Environment.h"
#include "support/TemporaryFolder.h"
#include "testing/FakeImageCodec.h"
#include "testing/FakeWindowListBackend.h"
#include "testing/RecordingCanvas.h"

namespace zd {
namespace {

using Kind = CanvasCall::Kind;

const ScreenInfo retina1440{{0, 0, 1440, 900}, {0, 0, 1440, 875}, 2.0};

class CompositorTest : public ::testing::Test {
  protected:
    Image render(const Compositor::Inputs& inputs, std::optional<ScreenInfo> screen = retina1440,
                 double barPts = 24) {
        return Compositor::render(inputs, {canvases, codec, screen, barPts});
    }
    const CanvasRecord& drawn() const { return *canvases.records().back(); }
    // The draw of the window (or display) image: the first image draw that isn't the
    // background picture or the bar strip.
    CanvasCall windowDraw(const Image& window) const {
        for (const auto& call : drawn().callsOf(Kind::drawImage)) {
            if (call.imageId == window.storageId())
                return call;
        }
        ADD_FAILURE() << "window not drawn";
        return {};
    }

    RecordingCanvasFactory canvases;
    FakeImageCodec codec;
};

Compositor::Inputs inputsFor(Image window, Size canvas, bool fullDisplay = false) {
    return {.windowImage = std::move(window),
            .canvas = canvas,
            .background = {BackgroundKind::color, std::nullopt, {0.2, 0.3, 0.4, 1}},
            .isFullDisplayCapture = fullDisplay};
}

TEST_F(CompositorTest, ResultHasTheTruncatedCanvasSize) {
    const Image result = render(inputsFor(Image(100, 100), {1439.9, 900.7}));
    EXPECT_EQ(std::pair(result.width(), result.height()), std::pair(1439, 900));
    EXPECT_TRUE(drawn().finished);
}

TEST_F(CompositorTest, CanvasThatCantBeABitmapGivesAnEmptyImage) {
    for (Size bad :
         {Size{0, 100}, Size{std::numeric_limits<double>::quiet_NaN(), 10},
          Size{std::numeric_limits<double>::infinity(), 10}, Size{1e300, 1e300}, Size{-5, 10}}) {
        EXPECT_TRUE(render(inputsFor(Image(10, 10), bad)).isNull());
    }
    canvases.maxPixels = 100;
    EXPECT_TRUE(render(inputsFor(Image(10, 10), {200, 200})).isNull());
}

TEST_F(CompositorTest, SingleWindowIsDrawnWholeWithItsShadow) {
    const Image window(1440, 900);
    render(inputsFor(window, {1440, 900}));  // half the screen's pixels: the shadow stays whole
    const auto draw = windowDraw(window);
    EXPECT_EQ(draw.source, (Rect{0, 0, 1440, 900}));
    ASSERT_TRUE(draw.shadow.has_value());
    EXPECT_EQ(*draw.shadow, (Shadow{{0, -16}, 40, Color::black(0.45)}));
    EXPECT_EQ(draw.op, CompositeOp::sourceOver);

    auto plain = inputsFor(window, {1440, 900});
    plain.applyShadow = false;
    render(plain);
    EXPECT_FALSE(windowDraw(window).shadow.has_value());
    EXPECT_TRUE(drawn().callsOf(Kind::setShadow).empty());
}

// Where the window lands: its share of the screen's width (k = canvas / screen pixels), centred
// in the free height above the bar (B = canvas height · 24 / 900), shrunk to fit.
struct PlacementCase {
    const char* name;
    Size window, canvas;
    bool barVisible;
    Rect expected;
};

class WindowPlacement : public CompositorTest,
                        public ::testing::WithParamInterface<PlacementCase> {};

TEST_P(WindowPlacement, KeepsTheShareOfTheScreenCentredAboveTheBar) {
    const auto& c = GetParam();
    const Image window(static_cast<int>(c.window.width), static_cast<int>(c.window.height));
    auto inputs = inputsFor(window, c.canvas);
    inputs.menuBar.visible = c.barVisible;
    render(inputs);
    EXPECT_EQ(windowDraw(window).rect, c.expected);
    if (!c.barVisible) {
        EXPECT_TRUE(drawn().callsOf(Kind::drawSymbol).empty());
        EXPECT_TRUE(drawn().callsOf(Kind::drawText).empty());
    }
}

constexpr double k = 1752.0 / 4000.0;

// clang-format off
INSTANTIATE_TEST_SUITE_P(Cases, WindowPlacement, ::testing::Values(
    // Half the screen wide on a canvas of the screen's pixels: k = 1, A = 1800 − 48.
    PlacementCase{"HalfTheScreen", {1440, 900}, {2880, 1800}, true,
                  {720, (1752 - 900) / 2.0, 1440, 900}},
    PlacementCase{"HalfTheCanvasHalvesTheWindow", {1440, 900}, {1440, 900}, true,
                  {360, (876 - 450) / 2.0, 720, 450}},
    PlacementCase{"TallWindowShrunkToTheFreeHeight", {1000, 4000}, {2880, 1800}, true,
                  {(2880 - k * 1000) / 2, 0, k * 1000, 1752}},
    PlacementCase{"HiddenBarCentresOnTheWholeCanvas", {1440, 900}, {2880, 1800}, false,
                  {720, 450, 1440, 900}}),
    [](const auto& p) { return std::string(p.param.name); });
// clang-format on

TEST_F(CompositorTest, NoMainScreenUsesTheFallbackScreen) {
    const Image window(1440, 900);
    render(inputsFor(window, {2880, 1800}), std::nullopt);
    // B = max(1800 · 24/900, 8) = 48; screen 1440 pt at scale 2.
    EXPECT_EQ(windowDraw(window).rect, (Rect{720, 426, 1440, 900}));
    // A small canvas keeps a bar of at least 8 pixels.
    render(inputsFor(window, {144, 90}), std::nullopt);
    const auto bar = drawn().callsOf(Kind::fillRect)[1];  // [0] is the background
    EXPECT_EQ(bar.offset, (Point{0, 82}));
    EXPECT_DOUBLE_EQ(bar.rect.height, 8);
}

TEST_F(CompositorTest, BarHeightFollowsTheRealBarsShareOfTheScreen) {
    const Image window(100, 100);
    render(inputsFor(window, {2880, 1800}), retina1440, 37.5);  // a notched display's bar
    const auto barFill = drawn().callsOf(Kind::fillRect)[1];
    EXPECT_EQ(barFill.offset, (Point{0, 1800 - 75}));
    EXPECT_EQ(barFill.rect, (Rect{0, 0, 2880, 75}));
}

struct FullDisplayCase {
    Size canvas;
    Size image;
    bool barVisible;
    double barHeight;
};

class FullDisplayLayout : public CompositorTest,
                          public ::testing::WithParamInterface<FullDisplayCase> {};

TEST_P(FullDisplayLayout, CutsTheRealBarAndStretchesTheRest) {
    const auto& param = GetParam();
    const Image display(static_cast<int>(param.image.width), static_cast<int>(param.image.height));
    auto inputs = inputsFor(display, param.canvas, true);
    inputs.menuBar.visible = param.barVisible;
    render(inputs);
    const auto draw = windowDraw(display);
    const double a = param.barVisible ? param.canvas.height - param.barHeight : param.canvas.height;
    // The real bar's 48 rows (24 pt at scale 2) are always left out of the source.
    EXPECT_EQ(draw.source, (Rect{0, 0, param.image.width, param.image.height - 48}));
    EXPECT_EQ(draw.rect, (Rect{0, 0, param.canvas.width, a}));
    EXPECT_FALSE(draw.shadow.has_value());
    if (param.barVisible) {
        EXPECT_EQ(drawn().callsOf(Kind::fillRect)[1].rect.height, param.barHeight);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Cases, FullDisplayLayout,
    ::testing::Values(
        // Proportional: 48 · 2880/2880.
        FullDisplayCase{{2880, 1800}, {2880, 1800}, true, 48},
        FullDisplayCase{{2880, 1800}, {2880, 1800}, false, 48},
        // Proportional 96, capped at max(60, 0.08 · 900) = 72 on a wide, low canvas.
        FullDisplayCase{{2880, 900}, {1440, 900}, true, 72},
        // Proportional 192 on a tiny display image, capped at the floor of 60.
        FullDisplayCase{{1440, 500}, {360, 225}, true, 60}));

TEST_F(CompositorTest, BackgroundPictureCoversTheCanvasCentred) {
    Compositor::Inputs inputs = inputsFor(Image(10, 10), {2880, 1800});
    inputs.background = {BackgroundKind::image, "/pics/wide.jpg", {1, 0, 0, 1}};
    const Image picture(1000, 500);
    codec.files["/pics/wide.jpg"] = picture;
    render(inputs);
    const auto draws = drawn().callsOf(Kind::drawImage);
    ASSERT_EQ(draws[0].imageId, picture.storageId());
    // f = max(2.88, 3.6): cropped evenly left and right.
    EXPECT_EQ(draws[0].rect, (Rect{-360, 0, 3600, 1800}));
    EXPECT_EQ(draws[0].source, (Rect{0, 0, 1000, 500}));
    for (const auto& fill : drawn().callsOf(Kind::fillRect)) {
        EXPECT_NE(fill.color, (Color{1, 0, 0, 1})) << "no colour shows around a cover";
    }
}

TEST_F(CompositorTest, UnreadableBackgroundPictureFallsBackToTheColour) {
    Compositor::Inputs inputs = inputsFor(Image(10, 10), {1440, 900});
    inputs.background = {BackgroundKind::image, "/pics/gone.jpg", {1, 0, 0, 1}};
    render(inputs);
    const auto fill = drawn().callsOf(Kind::fillRect).front();
    EXPECT_EQ(fill.rect, (Rect{0, 0, 1440, 900}));
    EXPECT_EQ(fill.color, (Color{1, 0, 0, 1}));
}

TEST_F(CompositorTest, TransparentBackgroundPaintsNothingUnderTheWindow) {
    const Image window(100, 100);
    Compositor::Inputs inputs = inputsFor(window, {1440, 900});
    inputs.background.kind = BackgroundKind::transparent;
    inputs.menuBar.visible = false;
    render(inputs);
    EXPECT_TRUE(drawn().callsOf(Kind::fillRect).empty());
    EXPECT_EQ(drawn().callsOf(Kind::drawImage).size(), 1u);
}

TEST_F(CompositorTest, CapturedBarWithRealAccessoriesIsDrawnAlone) {
    const Image strip(2880, 48);
    Compositor::Inputs inputs = inputsFor(Image(100, 100), {2880, 1800});
    inputs.capturedMenuBar = strip;
    inputs.menuBar.replaceAccessories = false;
    render(inputs);
    const auto draws = drawn().callsOf(Kind::drawImage);
    ASSERT_EQ(draws.size(), 2u);
    EXPECT_EQ(draws[1].imageId, strip.storageId());
    EXPECT_EQ(draws[1].rect, (Rect{0, 1752, 2880, 48}));
    EXPECT_EQ(draws[1].source, (Rect{0, 0, 2880, 48}));
    EXPECT_TRUE(drawn().callsOf(Kind::drawText).empty());
    EXPECT_TRUE(drawn().callsOf(Kind::drawSymbol).empty());
}

struct EraseCase {
    double fraction;
    double canvasWidth;
};

class CapturedBarErase : public CompositorTest, public ::testing::WithParamInterface<EraseCase> {};

TEST_P(CapturedBarErase, SmearsAColumnOverTheStatusItemsAndDrawsOurOwn) {
    const auto [g, w] = GetParam();
    const double h = w * 1800 / 2880;
    const Image strip(3024, 74);  // any proportions: stretched into the bar
    Compositor::Inputs inputs = inputsFor(Image(100, 100), {w, h});
    inputs.capturedMenuBar = strip;
    inputs.statusItemsLeftFraction = g;
    inputs.mode = AppearanceMode::dark;
    render(inputs);

    const double c = w / 1440;
    const double b = h * 24 / 900;
    RecordingCanvas measurer(1, 1);
    const double cluster = MenuBarRenderer::rightClusterWidth(measurer, inputs.menuBar, c);
    const double erase = std::max(cluster + 24 * c, (1 - g) * w + 12 * c);

    const auto draws = drawn().callsOf(Kind::drawImage);
    ASSERT_EQ(draws.size(), 3u);
    EXPECT_EQ(draws[1].rect, (Rect{0, h - b, w, b}));
    EXPECT_EQ(draws[2].imageId, strip.storageId());
    EXPECT_EQ(draws[2].op, CompositeOp::copy);
    EXPECT_EQ(draws[2].source, (Rect{std::max((g - 0.02) * 3024, 0.0), 0, 2, 74}));
    EXPECT_EQ(draws[2].rect, (Rect{w - erase, h - b, erase, b}));
    // Then the synthetic cluster, clock included, in white for dark; no bar fill, no logo.
    const auto texts = drawn().callsOf(Kind::drawText);
    ASSERT_FALSE(texts.empty());
    EXPECT_EQ(texts[0].text, "9:41 AM");
    EXPECT_EQ(texts[0].color, Color::white(1.0));
    EXPECT_TRUE(drawn().callsOf(Kind::fillRect).size() == 1u);  // the background only
    for (const auto& symbol : drawn().callsOf(Kind::drawSymbol))
        EXPECT_NE(symbol.text, "apple.logo");
}

INSTANTIATE_TEST_SUITE_P(Fractions, CapturedBarErase,
                         ::testing::Values(EraseCase{1.0, 2880},   // none found: cluster width
                                           EraseCase{0.6, 2880},   // real items wider
                                           EraseCase{0.01, 1440},  // column clamped at 0
                                           EraseCase{0.9, 1280}));

TEST(Subtracting, CutsIntoNonOverlappingBandsInOrder) {
    const Rect self{0, 0, 100, 100};
    EXPECT_EQ(Compositor::subtracting(self, {200, 200, 10, 10}), std::vector<Rect>{self});
    EXPECT_EQ(Compositor::subtracting(self, {100, 0, 10, 10}),
              std::vector<Rect>{self});  // touching
    EXPECT_TRUE(Compositor::subtracting(self, {-10, -10, 200, 200}).empty());
    EXPECT_TRUE(Compositor::subtracting(self, self).empty());
    // A hole in the middle: bottom, top, left, right.
    EXPECT_EQ(
        Compositor::subtracting(self, {20, 30, 50, 40}),
        (std::vector<Rect>{{0, 0, 100, 30}, {0, 70, 100, 30}, {0, 30, 20, 40}, {70, 30, 30, 40}}));
    // A picture narrower than the canvas: side bands of the full height.
    EXPECT_EQ(Compositor::subtracting(self, {10, -50, 80, 200}),
              (std::vector<Rect>{{0, 0, 10, 100}, {90, 0, 10, 100}}));
}

ValueDictionary window(Value layer, Value bounds) {
    return {{"kCGWindowLayer", std::move(layer)},
            {"kCGWindowBounds", std::move(bounds)},
            {"kCGWindowOwnerName", "Window Server"}};
}
ValueDictionary bounds(Value height) {
    return {{"X", 0}, {"Y", 0}, {"Width", 1512}, {"Height", std::move(height)}};
}

TEST(RealMenuBarHeight, FirstLayer24WindowWithAHeight) {
    using Compositor::realMenuBarHeightPts;
    EXPECT_EQ(realMenuBarHeightPts(std::nullopt), 24.0);
    EXPECT_EQ(realMenuBarHeightPts(std::vector<Value>{}), 24.0);
    EXPECT_EQ(
        realMenuBarHeightPts(std::vector<Value>{window(0, bounds(900)), window(24, bounds(37))}),
        37.0);
    EXPECT_EQ(realMenuBarHeightPts(std::vector<Value>{
                  window(24, bounds(0)),                           // no height
                  window("24", bounds(30)),                        // layer not a number
                  window(25, bounds(22)),                          // status item level
                  window(24, ValueDictionary{{"Height", "big"}}),  // not all numbers
                  window(24, Value("bounds")),                     // not a dictionary
                  window(24, ValueDictionary{{"Width", 5}}),       // no Height
                  window(24, bounds(33.5)), window(24, bounds(40))}),
              33.5);
    EXPECT_EQ(realMenuBarHeightPts(std::vector<Value>{Value(5), Value()}), 24.0);
}

TEST_F(CompositorTest, EnvironmentSuppliesTheLiveBarHeightFromOnScreenWindows) {
    testing::FakeWindowListBackend windows;
    windows.setWindows(
        ValueArray{testing::windowRecord(7, 1, "Dock", "", {0, 0, 1512, 982}),
                   testing::windowRecord(9, 1, "Window Server", "Menubar", {0, 0, 1512, 37}, 24)});
    Environment env{.images = &codec, .windowList = &windows, .canvases = &canvases};
    const Image display(3024, 1964);
    Compositor::render(inputsFor(display, {3024, 1964}, true), env);
    ASSERT_EQ(windows.requests.size(), 1u);
    EXPECT_EQ(static_cast<unsigned>(windows.requests[0]), 1u);  // on-screen windows only
    // No main screen: scale 2, so the real bar is 74 rows of the display image.
    EXPECT_EQ(windowDraw(display).source, (Rect{0, 0, 3024, 1964 - 74}));

    env.canvases = nullptr;
    EXPECT_TRUE(Compositor::render(inputsFor(display, {3024, 1964}, true), env).isNull());
}

class WritePNG : public ::testing::Test {
  protected:
    test::TemporaryFolder folder;
    std::filesystem::path root = folder.path() / "out";
    FakeImageCodec codec;
};

TEST_F(WritePNG, CreatesParentFoldersAndWritesTheEncodedBytes) {
    const auto path = root / "a" / "b" / "light.png";
    ASSERT_TRUE(Compositor::writePNG(Image(3, 2), path, codec));
    std::ifstream in(path, std::ios::binary);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(in), {}), "PNG 3 2");
}

TEST_F(WritePNG, EncodingFailureWritesNothingAndAFolderInTheWayIsAFileSystemFailure) {
    codec.failEncoding = true;
    const auto path = root / "light.png";
    auto result = Compositor::writePNG(Image(3, 2), path, codec);
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error(), (OutputError{"Zephyrdock", 1, "Could not encode PNG"}));
    EXPECT_FALSE(std::filesystem::exists(root));
    // An image that render couldn't make fails the same way.
    codec.failEncoding = false;
    EXPECT_EQ(Compositor::writePNG(Image(), path, codec).error().localizedDescription,
              "Could not encode PNG");

    folder.file("out/blocker");
    auto blocked = Compositor::writePNG(Image(1, 1), root / "blocker" / "light.png", codec);
    ASSERT_FALSE(blocked);
    EXPECT_NE(blocked.error().domain, "Zephyrdock");
    EXPECT_FALSE(blocked.error().localizedDescription.empty());
}

}  // namespace
}  // namespace zd
