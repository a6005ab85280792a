#include "capture/CaptureEngine.h"

#include <gtest/gtest.h>

#include "CaptureTestSupport.h"

namespace zd::testing {
namespace {

ShareableWindow window(std::uint32_t id, Rect frame) {
    return ShareableWindow{id, frame, ShareableApplication{10, "Pad"}, "Notes", 0};
}

Image filled(int w, int h, std::uint32_t argb) {
    return Image(w, h, std::vector<std::uint32_t>(static_cast<std::size_t>(w * h), argb));
}

TEST(CaptureWindow, CapturesTheListedWindowAtTwiceItsSizeTruncated) {
    CaptureFakes fakes;
    fakes.capture.content.displays = {{1, 1440, 900}};
    fakes.capture.content.windows = {window(3, {0, 0, 10, 10}), window(7, {5, 5, 800.5, 600.25})};
    fakes.capture.pictures[7] = filled(1601, 1200, 0xff000000);
    auto result = runToEnd(CaptureEngine::captureWindow(fakes.env(), CaptureTarget{7}));
    ASSERT_TRUE(result);
    EXPECT_EQ(result->width(), 1601);
    ASSERT_EQ(fakes.capture.captures.size(), 1u);
    const auto& config = fakes.capture.captures[0].configuration;
    EXPECT_EQ(std::pair(config.width, config.height), std::pair(1601, 1200));
    EXPECT_FALSE(config.showsCursor || config.capturesAudio || config.scalesToFit);
    EXPECT_FALSE(config.backgroundColor) << "a single window keeps the system's background";
    EXPECT_FALSE(config.ignoresShadowsSingleWindow);
    EXPECT_EQ(fakes.workers.jobs, 2) << "the query and the capture both block a worker";
}

TEST(CaptureWindow, TellsWhyItFailed) {
    CaptureFakes fakes;
    fakes.capture.content.windows = {window(3, {0, 0, 10, 10})};
    auto missing = runToEnd(CaptureEngine::captureWindow(fakes.env(), CaptureTarget{7}));
    EXPECT_TRUE(!missing && missing.error().is(CaptureError::windowNotFound));

    fakes.capture.failures[3] = CaptureFailure::system("refused");
    auto refused = runToEnd(CaptureEngine::captureWindow(fakes.env(), CaptureTarget{3}));
    EXPECT_TRUE(!refused && refused.error() == CaptureFailure::system("refused"))
        << "the capture's own failure is passed on unchanged";

    fakes.capture.contentFailure = "no permission";
    auto denied = runToEnd(CaptureEngine::captureWindow(fakes.env(), CaptureTarget{3}));
    EXPECT_TRUE(!denied && denied.error().is(CaptureError::permissionDenied));
}

struct BlankCase {
    const char* name;
    Image image;
    bool blank;
};

Image transparentWithDot(int w, int h, int x, int y) {
    Image image(w, h);
    image.setPixel(x, y, 0x01000000);
    return image;
}

class BlankDetection : public ::testing::TestWithParam<BlankCase> {};

TEST_P(BlankDetection, LooksAtAlphaOnAFiveByFiveGrid) {
    EXPECT_EQ(CaptureEngine::isCGImageBlank(GetParam().image), GetParam().blank);
}

INSTANTIATE_TEST_SUITE_P(
    CaptureEngine, BlankDetection,
    ::testing::Values(
        BlankCase{"Empty", Image(), true}, BlankCase{"ZeroByZero", Image(0, 0), true},
        BlankCase{"OnePixelOpaque", filled(1, 1, 0xff000000), false},
        BlankCase{"BlackButOpaque", filled(40, 30, 0xff000000), false},
        BlankCase{"AllTransparent", Image(40, 30), true},
        BlankCase{"FourByFourTransparent", Image(4, 4), true},
        BlankCase{"DotOnTheGridAtTheFarSample", transparentWithDot(100, 50, 80, 40), false},
        BlankCase{"DotOnTheGridAtTheEdge", transparentWithDot(100, 50, 0, 0), false},
        BlankCase{"DotOffTheGridIsMissed", transparentWithDot(100, 50, 99, 49), true}),
    [](const auto& testCase) { return std::string(testCase.param.name); });

}  // namespace
}  // namespace zd::testing
