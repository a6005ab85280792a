#include "store/FlathubExport.h"

#include <gtest/gtest.h>

#include "testing/RecordingCanvas.h"

namespace zd {
namespace {

struct CanvasCase {
    Size window;
    double scale;
    double factor;
    Size canvas;
};

class FlathubExportCanvas : public ::testing::TestWithParam<CanvasCase> {};

// The window keeps its pixels up to 1000 × 700 points; beyond, it shrinks as a whole. The
// margin makes room for the shadow: 38 points on every side.
TEST_P(FlathubExportCanvas, FollowsTheWindowWithinTheLimit) {
    const auto& c = GetParam();
    EXPECT_DOUBLE_EQ(FlathubExport::windowFactor(c.window, c.scale), c.factor);
    EXPECT_EQ(FlathubExport::canvas(c.window, c.scale), c.canvas);
}

INSTANTIATE_TEST_SUITE_P(Cases, FlathubExportCanvas,
                         ::testing::Values(CanvasCase{{1440, 900}, 2, 1.0, {1592, 1052}},
                                           CanvasCase{{2000, 1400}, 2, 1.0, {2152, 1552}},
                                           CanvasCase{{2880, 1400}, 2, 2000.0 / 2880, {2152, 1124}},
                                           CanvasCase{{1200, 900}, 1, 700.0 / 900, {1009, 776}}));

TEST(FlathubExport, DrawsTheWindowCentredWithItsShadowOnTransparency) {
    RecordingCanvasFactory canvases;
    const Image window(1440, 900);
    // At full size, and in a tile a quarter as large.
    for (const auto& [canvas, f] : {std::pair{Size{1592, 1052}, 1.0}, {Size{398, 263}, 0.25}}) {
        FlathubExport::render(window, canvas, 2, canvases);
        const auto draws = canvases.records().back()->callsOf(CanvasCall::Kind::drawImage);
        ASSERT_EQ(draws.size(), 1u);
        EXPECT_EQ(draws[0].rect, (Rect{76 * f, 76 * f, 1440 * f, 900 * f}));
        EXPECT_EQ(draws[0].shadow, (Shadow{{0, -16 * f}, 40 * f, Color::black(0.45)}));
        EXPECT_TRUE(canvases.records().back()->callsOf(CanvasCall::Kind::fillRect).empty());
    }
}

}  // namespace
}  // namespace zd
