#include "ShadowBlur.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace zd {
namespace {

TEST(ShadowBlur, SpreadsAPointLikeAGaussianOfTheGivenSigma) {
    for (const double sigma : {2.0, 6.0, 20.0}) {
        const int spread = ShadowBlur::spread(sigma);
        EXPECT_GE(spread, static_cast<int>(2 * sigma)) << sigma;
        EXPECT_LE(spread, static_cast<int>(3 * sigma) + 3) << sigma;

        // A 1-pixel-high row would lose precision in 8 bits; use a bright square instead.
        const int n = 2 * spread + 9;
        std::vector<std::uint8_t> mask(static_cast<std::size_t>(n * n), 0);
        const int c = n / 2;
        for (int y = c - 2; y <= c + 2; ++y)
            for (int x = c - 2; x <= c + 2; ++x)
                mask[static_cast<std::size_t>(y * n + x)] = 255;
        ShadowBlur::blur(mask.data(), n, n, static_cast<std::size_t>(n), sigma);

        double mass = 0, varianceX = 0;
        for (int y = 0; y < n; ++y)
            for (int x = 0; x < n; ++x) {
                const double v = mask[static_cast<std::size_t>(y * n + x)];
                mass += v;
                varianceX += v * (x - c) * (x - c);
            }
        varianceX /= mass;
        EXPECT_NEAR(mass, 25 * 255, 25 * 255 * 0.08) << "coverage is kept, sigma " << sigma;
        // The square itself adds a variance of 2 (5 pixels wide).
        EXPECT_NEAR(std::sqrt(varianceX - 2.0), sigma, sigma * 0.12 + 0.3) << sigma;
        // Symmetric about the centre.
        EXPECT_EQ(mask[static_cast<std::size_t>(c * n + c - 3)],
                  mask[static_cast<std::size_t>(c * n + c + 3)]);
        EXPECT_EQ(mask[static_cast<std::size_t>((c - 4) * n + c)],
                  mask[static_cast<std::size_t>((c + 4) * n + c)]);
    }
}

TEST(ShadowBlur, LeavesSolidInteriorsAndEmptyFarFieldAlone) {
    const int w = 300, h = 280, stride = 304;
    std::vector<std::uint8_t> mask(static_cast<std::size_t>(stride * h), 0);
    for (int y = 80; y < 200; ++y)
        for (int x = 80; x < 220; ++x)
            mask[static_cast<std::size_t>(y * stride + x)] = 255;
    ShadowBlur::blur(mask.data(), w, h, static_cast<std::size_t>(stride), 10.0, 2);
    EXPECT_EQ(mask[static_cast<std::size_t>(140 * stride + 150)], 255);
    EXPECT_EQ(mask[static_cast<std::size_t>(10 * stride + 10)], 0);
    EXPECT_NEAR(mask[static_cast<std::size_t>(140 * stride + 80)], 128, 12) << "edge at half";
    EXPECT_EQ(mask[static_cast<std::size_t>(140 * stride + 301)], 0) << "padding untouched";
}

}  // namespace
}  // namespace zd
