#include "QtCanvas.h"

#include <gtest/gtest.h>

#include <string_view>

#include "GuiApp.h"
#include "QtCanvasFactory.h"

namespace zd {
namespace {

constexpr Color kRed{1, 0, 0, 1};

class QtCanvasTest : public ::testing::Test {
  protected:
    void SetUp() override { testing::ensureGuiApp(); }

    // Pixel at canvas coordinates (y upward from the bottom row).
    static std::uint32_t at(const Image& image, int x, int yUp) {
        return image.pixel(x, image.height() - 1 - yUp);
    }
    QtCanvasFactory factory_;
};

TEST_F(QtCanvasTest, FactoryRefusesImpossibleSizes) {
    EXPECT_EQ(factory_.makeCanvas(0, 10), nullptr);
    EXPECT_EQ(factory_.makeCanvas(10, -1), nullptr);
    EXPECT_EQ(factory_.makeCanvas(100000, 100000), nullptr);
    auto canvas = factory_.makeCanvas(12, 7);
    ASSERT_NE(canvas, nullptr);
    const Image image = canvas->finish();
    EXPECT_EQ(image.width(), 12);
    EXPECT_EQ(image.height(), 7);
    EXPECT_TRUE(std::ranges::all_of(image.pixels(), [](auto p) { return p == 0; }))
        << "starts transparent";
}

TEST_F(QtCanvasTest, OriginIsLowerLeftAndTranslationAndClipAreSavedWithTheState) {
    QtCanvas canvas(20, 10);
    canvas.fillRect({0, 0, 20, 1}, kRed);
    canvas.save();
    canvas.translate(5, 4);
    canvas.fillRect({0, 0, 1, 1}, Color{0, 0, 1, 1});
    canvas.restore();
    canvas.fillRect({0, 9, 1, 1}, Color{0, 1, 0, 1});
    canvas.fillRect({19, 9, 1, 1}, Color::white(0.97, 0.85));
    canvas.restore();  // unbalanced: ignored
    const Image image = canvas.finish();
    EXPECT_EQ(image.pixel(3, 9), 0xffff0000u) << "y = 0 is the bottom row";
    EXPECT_EQ(at(image, 5, 4), 0xff0000ffu);
    EXPECT_EQ(image.pixel(0, 0), 0xff00ff00u) << "translation restored";
    EXPECT_EQ(Image::alphaOf(image.pixel(19, 0)), 217u) << "a colour's own alpha";

    QtCanvas clipped(40, 40);
    clipped.save();
    clipped.clipToRoundedRect({0, 0, 40, 40}, 12);
    clipped.fillRect({0, 0, 40, 40}, kRed);
    clipped.restore();
    clipped.fillEllipse({30, 30, 10, 10}, Color{0, 0, 1, 1});
    const Image rounded = clipped.finish();
    EXPECT_EQ(at(rounded, 0, 0), 0u) << "the rounded clip cuts the corners";
    EXPECT_EQ(at(rounded, 20, 20), 0xffff0000u);
    EXPECT_EQ(at(rounded, 35, 35), 0xff0000ffu) << "the clip ends with restore";
}

TEST_F(QtCanvasTest, ImageSourceRectangleCountsFromTheBottomRowAndCopyReplacesAlpha) {
    Image picture(4, 4);
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 4; ++x)
            picture.setPixel(x, y, y == 3 ? 0x80800000u : 0xff0000ffu);  // bottom row half red
    QtCanvas canvas(8, 8);
    canvas.fillRect({0, 0, 8, 8}, Color{0, 1, 0, 1});
    canvas.drawImage(picture, {0, 0, 4, 1}, {0, 0, 4, 1}, CompositeOp::copy);
    canvas.drawImage(picture, {}, {4, 4, 4, 4}, CompositeOp::sourceOver);
    const Image image = canvas.finish();
    EXPECT_EQ(at(image, 1, 0), 0x80800000u) << "copy keeps the source's alpha";
    EXPECT_EQ(at(image, 5, 7), 0xff0000ffu);
    const auto blended = at(image, 5, 4);  // half red over green
    EXPECT_EQ(Image::alphaOf(blended), 0xffu);
    EXPECT_EQ(Image::redOf(blended), 0x80u);
    EXPECT_NEAR(Image::greenOf(blended), 0x7f, 1);
}

TEST_F(QtCanvasTest, CoverScaledPictureLeavesNoCanvasPixelUncovered) {
    // A 3:2 picture over a 4:3 canvas, overflowing left and right as cover scaling does.
    Image picture(300, 200);
    for (auto& p : picture.mutablePixels())
        p = 0xff204080u;
    QtCanvas canvas(160, 120);
    const double f = std::max(160.0 / 300, 120.0 / 200);
    canvas.drawImage(picture, {}, {(160 - 300 * f) / 2, (120 - 200 * f) / 2, 300 * f, 200 * f},
                     CompositeOp::sourceOver);
    const Image image = canvas.finish();
    for (auto p : image.pixels())
        ASSERT_EQ(p, 0xff204080u);
}

TEST_F(QtCanvasTest, ShadowFallsDownwardAndLooksTheSameThroughEveryDrawingPath) {
    // The fast path (a 1:1 picture, no clip), a painted shape, and a clipped draw (blended by
    // QPainter) must all give the same shadow; a transparent canvas stays clear elsewhere.
    Image square(30, 30);
    for (auto& p : square.mutablePixels())
        p = 0xff000000u | 0x00ffffffu;
    auto draw = [&](int variant) {
        QtCanvas canvas(120, 120);
        canvas.save();
        if (variant == 2)
            canvas.clipToRoundedRect({0, 0, 120, 120}, 0);
        canvas.setShadow(Shadow{{0, -16}, 12, Color::black(0.45)});
        if (variant == 1) {
            canvas.fillRect({45, 50, 30, 30}, Color::white(1.0));
        } else {
            canvas.drawImage(square, {}, {45, 50, 30, 30}, CompositeOp::sourceOver);
        }
        canvas.restore();
        return canvas.finish();
    };
    const Image fast = draw(0);
    for (const int variant : {1, 2}) {
        const Image other = draw(variant);
        int worst = 0;
        for (int y = 0; y < 120; ++y)
            for (int x = 0; x < 120; ++x)
                worst =
                    std::max(worst, std::abs(static_cast<int>(Image::alphaOf(fast.pixel(x, y))) -
                                             static_cast<int>(Image::alphaOf(other.pixel(x, y)))));
        EXPECT_LE(worst, 3) << "variant " << variant;
    }
    // The square itself is untouched by its shadow; below it the shadow is dark (45 % at most),
    // above it, at the same distance, much lighter.
    EXPECT_EQ(at(fast, 60, 65), 0xffffffffu);
    const auto below = Image::alphaOf(at(fast, 60, 50 - 8));
    const auto above = Image::alphaOf(at(fast, 60, 80 + 8));
    EXPECT_GT(below, 70u);
    EXPECT_LE(below, 116u);
    EXPECT_LT(above, below / 3) << above << " above, " << below << " below";
    EXPECT_EQ(at(fast, 3, 3), 0u);
    EXPECT_EQ(at(fast, 116, 116), 0u);
}

TEST_F(QtCanvasTest, PictureShrunkManyTimesAveragesItsPixels) {
    // One-pixel stripes shrunk eight times: every source pixel counts, giving an even grey
    // rather than the stripes' aliases.
    Image stripes(256, 256);
    for (int y = 0; y < 256; ++y)
        for (int x = 0; x < 256; ++x)
            stripes.setPixel(x, y, x % 2 ? 0xffffffffu : 0xff000000u);
    QtCanvas canvas(32, 32);
    canvas.drawImage(stripes, {}, {0, 0, 32, 32}, CompositeOp::sourceOver);
    const Image image = canvas.finish();
    for (int y = 2; y < 30; ++y)
        for (int x = 2; x < 30; ++x)
            ASSERT_NEAR(Image::redOf(image.pixel(x, y)), 128, 12);
}

TEST_F(QtCanvasTest, TextMetricsScaleWithSizeAndTextDrawsAboveItsOrigin) {
    QtCanvas canvas(400, 100);
    const auto m13 = canvas.measureText("File Edit View", 13, FontWeight::regular);
    const auto m26 = canvas.measureText("File Edit View", 26, FontWeight::regular);
    EXPECT_GT(m13.width, 50);
    EXPECT_NEAR(m26.width, 2 * m13.width, m13.width * 0.05);
    EXPECT_NEAR(m26.capHeight, 26 * 0.71, 26 * 0.1);
    EXPECT_LT(m26.descender, -2);
    EXPECT_GT(m26.descender, -10);
    EXPECT_GE(canvas.measureText("Datei", 13, FontWeight::semibold).width,
              canvas.measureText("Datei", 13, FontWeight::regular).width);
    EXPECT_EQ(canvas.measureText("", 13, FontWeight::regular).width, 0);
    // Scripts the first font lacks still get glyphs (through fallback), so they take room.
    for (const char* text : {"ファイル", "文件", "파일", "ملف"})
        EXPECT_GT(canvas.measureText(text, 26, FontWeight::regular).width, 20) << text;

    canvas.drawText("HHHH", {10, 20}, 26, FontWeight::regular, kRed);
    canvas.drawText("ملف 文件", {200, 20}, 26, FontWeight::regular, kRed);
    const Image image = canvas.finish();
    const double baseline = 20 - m26.descender;
    int inked = 0, belowBaseline = 0, cjkInked = 0;
    for (int y = 0; y < 100; ++y)
        for (int x = 0; x < 400; ++x) {
            if (Image::alphaOf(at(image, x, y)) < 128)
                continue;
            if (x < 190) {
                ++inked;
                if (y < baseline - 1)
                    ++belowBaseline;
                EXPECT_LE(y, baseline + m26.capHeight + 1);
            } else {
                ++cjkInked;
            }
        }
    EXPECT_GT(inked, 100);
    EXPECT_EQ(belowBaseline, 0) << "capitals sit on the baseline";
    EXPECT_GT(cjkInked, 100);
}

TEST_F(QtCanvasTest, EverySymbolDrawsNonEmptyAtItsNaturalSizeAndTheLogoIsMissing) {
    int previousBatteryInk = -1;  // the battery's levels, in order, fill more ink
    for (const char* name :
         {"battery.0percent", "battery.25percent", "battery.50percent", "battery.75percent",
          "battery.100percent", "wifi", "magnifyingglass", "switch.2"}) {
        QtCanvas canvas(100, 60);
        const auto size = canvas.symbolSize(name, 28);
        ASSERT_TRUE(size.has_value()) << name;
        EXPECT_GT(size->width, 14) << name;
        EXPECT_GT(size->height, 14) << name;
        EXPECT_LT(size->width, 28 * 1.8) << name;
        EXPECT_EQ(canvas.symbolSize(name, 14)->width * 2, size->width) << name;
        ASSERT_TRUE(canvas.drawSymbol(name, 28, {10, 10}, kRed));
        const Image image = canvas.finish();
        int inside = 0, outside = 0;
        for (int y = 0; y < 60; ++y)
            for (int x = 0; x < 100; ++x) {
                if (Image::alphaOf(at(image, x, y)) == 0)
                    continue;
                const bool in = x >= 9 && x <= 11 + size->width && y >= 9 && y <= 11 + size->height;
                ++(in ? inside : outside);
            }
        EXPECT_GT(inside, size->width * size->height / 6) << name;
        EXPECT_EQ(outside, 0) << name;
        if (std::string_view(name).starts_with("battery")) {
            int ink = 0;
            for (auto p : image.pixels())
                ink += static_cast<int>(Image::alphaOf(p));
            EXPECT_GT(ink, previousBatteryInk) << name;
            previousBatteryInk = ink;
        }
    }
    QtCanvas canvas(10, 10);
    EXPECT_FALSE(canvas.symbolSize("apple.logo", 14).has_value());
    EXPECT_FALSE(canvas.drawSymbol("apple.logo", 14, {0, 0}, kRed));
    EXPECT_FALSE(canvas.drawSymbol("no.such.symbol", 14, {0, 0}, kRed));
}

}  // namespace
}  // namespace zd
