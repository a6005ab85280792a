// The compositor drawn for real on the Qt canvas: the pixels a saved picture will have.
#include <gtest/gtest.h>

#include "GuiApp.h"
#include "QtCanvasFactory.h"
#include "composition/Compositor.h"
#include "testing/FakeImageCodec.h"

namespace zd {
namespace {

class CompositorPixelsTest : public ::testing::Test {
  protected:
    void SetUp() override { testing::ensureGuiApp(); }

    // A 640 × 400 canvas (c = 0.44), a 1440 × 900-point screen at scale 2, an opaque window.
    Compositor::Inputs inputs(BackgroundKind kind) {
        Image window(400, 240);
        for (auto& p : window.mutablePixels())
            p = 0xffe0e0e0u;
        Compositor::Inputs in;
        in.windowImage = window;
        in.canvas = {640, 400};
        in.background.kind = kind;
        in.background.url = "/pictures/wide.jpg";
        in.background.fillColor = {1, 0, 1, 1};  // magenta: must never show under a picture
        in.applyShadow = true;
        return in;
    }
    Image render(const Compositor::Inputs& in) {
        const Compositor::Platform platform{canvases_, codec_, screen_, 24.0};
        return Compositor::render(in, platform);
    }
    static std::uint32_t at(const Image& image, int x, int yUp) {
        return image.pixel(x, image.height() - 1 - yUp);
    }

    QtCanvasFactory canvases_;
    FakeImageCodec codec_;
    ScreenInfo screen_{{0, 0, 1440, 900}, {0, 0, 1440, 876}, 2.0};
};

TEST_F(CompositorPixelsTest, TransparentBackgroundHasAlphaOnlyUnderWindowShadowAndBar) {
    auto in = inputs(BackgroundKind::transparent);
    const Image image = render(in);
    ASSERT_EQ(image.width(), 640);
    const auto layout = Compositor::layout(in, screen_, 24.0);
    const Rect& d = layout.destination;
    const double reach = 40 * 1.5;  // the shadow's blur reaches at most this far
    for (int y = 0; y < 400; ++y)
        for (int x = 0; x < 640; ++x) {
            const bool underBar = y >= 400 - layout.barHeight - 1;
            const bool nearWindow = x > d.minX() - reach && x < d.maxX() + reach &&
                                    y > d.minY() - 16 - reach && y < d.maxY() + reach;
            if (!underBar && !nearWindow) {
                ASSERT_EQ(at(image, x, y), 0u) << x << "," << y;
            }
        }
    EXPECT_EQ(at(image, static_cast<int>(d.midX()), static_cast<int>(d.midY())), 0xffe0e0e0u);
    EXPECT_GT(Image::alphaOf(at(image, 5, 398)), 200u) << "the bar";
}

}  // namespace
}  // namespace zd
