#include "PngWriter.h"

#include <gtest/gtest.h>

#include <QImage>

#include <random>

#include "ImageConversion.h"

namespace zd {
namespace {

// Premultiplied pixels with every kind of alpha: clear, opaque and in between.
Image randomPremultiplied(int width, int height, unsigned seed) {
    std::mt19937 rng(seed);
    Image image(width, height);
    auto px = image.mutablePixels();
    for (auto& p : px) {
        const std::uint32_t kind = rng() % 4;
        const std::uint32_t a = kind == 0 ? 0 : kind == 1 ? 255 : rng() % 256;
        auto channel = [&] { return a == 0 ? 0u : static_cast<std::uint32_t>(rng() % (a + 1)); };
        p = Image::argb(a, channel(), channel(), channel());
    }
    return image;
}

QImage decode(const std::vector<std::uint8_t>& png) {
    QImage decoded;
    decoded.loadFromData(png.data(), static_cast<int>(png.size()), "PNG");
    return decoded;
}

class PngWriterRoundTrip
    : public ::testing::TestWithParam<std::tuple<PngWriter::Filter, int, int>> {};

TEST_P(PngWriterRoundTrip, DecodesToTheSamePremultipliedPixelsWithAlpha) {
    const auto [filter, level, threads] = GetParam();
    // The last size is many chunks of rows, compressed on several threads.
    for (const auto& [w, h] :
         {std::pair{1, 1}, std::pair{7, 3}, std::pair{129, 97}, std::pair{600, 410}}) {
        const Image image = randomPremultiplied(w, h, static_cast<unsigned>(w * 31 + h));
        const auto png = PngWriter::encode(image, {filter, level, threads});
        ASSERT_TRUE(png.has_value());
        const QImage decoded = decode(*png);
        ASSERT_FALSE(decoded.isNull()) << w << "x" << h;
        EXPECT_TRUE(decoded.hasAlphaChannel());
        const Image back = fromQImage(decoded);
        ASSERT_EQ(back.width(), w);
        ASSERT_EQ(back.height(), h);
        for (int y = 0; y < h; ++y)
            for (int x = 0; x < w; ++x)
                ASSERT_EQ(back.pixel(x, y), image.pixel(x, y)) << "at " << x << "," << y;
    }
}

INSTANTIATE_TEST_SUITE_P(FiltersLevelsThreads, PngWriterRoundTrip,
                         ::testing::Values(std::tuple{PngWriter::Filter::average, 1, 2},
                                           std::tuple{PngWriter::Filter::average, 1, 3},
                                           std::tuple{PngWriter::Filter::up, 2, 2},
                                           std::tuple{PngWriter::Filter::up, 1, 1},
                                           std::tuple{PngWriter::Filter::none, 6, 2},
                                           std::tuple{PngWriter::Filter::sub, 2, 2},
                                           std::tuple{PngWriter::Filter::paeth, 9, 3}));

TEST(PngWriter, OpaquePictureStillCarriesAnAlphaChannel) {
    Image image(300, 200);
    for (auto& p : image.mutablePixels())
        p = 0xff336699u;
    const auto png = PngWriter::encode(image);
    ASSERT_TRUE(png.has_value());
    EXPECT_EQ((*png)[25], 6) << "colour type RGBA";
    EXPECT_EQ(decode(*png).pixel(299, 199), 0xff336699u);
}

TEST(PngWriter, NullImageGivesNothing) {
    EXPECT_FALSE(PngWriter::encode(Image()).has_value());
    EXPECT_FALSE(PngWriter::encode(Image(0, 5)).has_value());
}

}  // namespace
}  // namespace zd
