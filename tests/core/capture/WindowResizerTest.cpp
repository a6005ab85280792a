#include "capture/WindowResizer.h"

#include <gtest/gtest.h>

#include "CaptureTestSupport.h"

namespace zd::testing {
namespace {

struct GeometryCase {
    const char* name;
    WindowSizePreset preset;
    Rect expected;
};

class ResizerGeometry : public ::testing::TestWithParam<GeometryCase> {};

// 1440 × 900 with the dock below and the menu bar above: visible 0, 80, 1440 × 795 from the
// lower left, that is 0, 25, 1440 × 795 from the top left.
TEST_P(ResizerGeometry, CentresInTheVisibleAreaInEitherCoordinateSystem) {
    auto fromBottomLeft =
        WindowResizer::targetFrame(GetParam().preset, {0, 80, 1440, 795}, 900, true);
    auto fromTopLeft =
        WindowResizer::targetFrame(GetParam().preset, {0, 25, 1440, 795}, 900, false);
    ASSERT_TRUE(fromBottomLeft && fromTopLeft);
    for (const Rect& r : {*fromBottomLeft, *fromTopLeft}) {
        EXPECT_NEAR(r.x, GetParam().expected.x, 1e-9);
        EXPECT_NEAR(r.y, GetParam().expected.y, 1e-9);
        EXPECT_NEAR(r.width, GetParam().expected.width, 1e-9);
        EXPECT_NEAR(r.height, GetParam().expected.height, 1e-9);
    }
}

INSTANTIATE_TEST_SUITE_P(
    WindowResizer, ResizerGeometry,
    ::testing::Values(
        GeometryCase{"ThreeQuarters", WindowSizePreset::threeQ, {180, 124.375, 1080, 596.25}},
        GeometryCase{"Half", WindowSizePreset::half, {360, 223.75, 720, 397.5}},
        GeometryCase{"FullLeavesMargins", WindowSizePreset::full, {57.6, 64.75, 1324.8, 715.5}}),
    [](const auto& testCase) { return std::string(testCase.param.name); });

TEST(WindowResizer, CurrentDoesNothingAtAll) {
    CaptureFakes fakes;
    fakes.screens.main = ScreenInfo{{0, 0, 1440, 900}, {0, 25, 1440, 795}};
    fakes.sizing.mainWindows[5] = SizableWindow{1};
    WindowResizer::apply(fakes.env(), WindowSizePreset::current, 5);
    EXPECT_TRUE(fakes.sizing.calls.empty());
    EXPECT_FALSE(WindowResizer::targetFrame(WindowSizePreset::current, {}, 900, false));
}

TEST(WindowResizer, FallsBackToTheFirstWindowAndSizesBeforePlacing) {
    CaptureFakes fakes;
    fakes.screens.main = ScreenInfo{{0, 0, 1440, 900}, {0, 25, 1440, 795}};
    fakes.sizing.allWindows[5] = {SizableWindow{7}, SizableWindow{8}};
    WindowResizer::apply(fakes.env(), WindowSizePreset::threeQ, 5);
    EXPECT_EQ(fakes.sizing.calls, (std::vector<std::string>{"mainWindow 5", "windows 5",
                                                            "setSize 7", "setPosition 7"}));
    EXPECT_EQ(fakes.sizing.sizes.front().second, (Size{1080, 596.25}));
    EXPECT_EQ(fakes.sizing.positions.front().second, (Point{180, 124.375}));
    // Within a limit (Flathub's 1000 × 700) each side is capped about the same centre.
    WindowResizer::apply(fakes.env(), WindowSizePreset::threeQ, 5, Size{1000, 700});
    EXPECT_EQ(fakes.sizing.sizes.back().second, (Size{1000, 596.25}));
    EXPECT_EQ(fakes.sizing.positions.back().second, (Point{220, 124.375}));
}

TEST(WindowResizer, GoesToTheScreenWithTheFocusTurnedByThePrimaryHeight) {
    CaptureFakes fakes;
    fakes.screens.bottomLeft = true;
    fakes.screens.primary = ScreenInfo{{0, 0, 1440, 900}, {0, 80, 1440, 795}};
    fakes.screens.main = ScreenInfo{{1440, 0, 1000, 1000}, {1440, 0, 1000, 1000}};
    fakes.sizing.mainWindows[5] = SizableWindow{1};
    WindowResizer::apply(fakes.env(), WindowSizePreset::half, 5);
    ASSERT_EQ(fakes.sizing.positions.size(), 1u);
    EXPECT_EQ(fakes.sizing.positions[0].second, (Point{1690, 900 - (250 + 500)}));
}

TEST(WindowResizer, WithoutAWindowOrAScreenNothingIsSet) {
    CaptureFakes fakes;
    fakes.screens.main = ScreenInfo{{0, 0, 1440, 900}, {0, 25, 1440, 795}};
    WindowResizer::apply(fakes.env(), WindowSizePreset::half, 5);
    fakes.screens.main.reset();
    fakes.sizing.mainWindows[5] = SizableWindow{1};
    WindowResizer::apply(fakes.env(), WindowSizePreset::half, 5);
    EXPECT_TRUE(fakes.sizing.sizes.empty());
    EXPECT_TRUE(fakes.sizing.positions.empty());
}

}  // namespace
}  // namespace zd::testing
