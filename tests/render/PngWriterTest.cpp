#include "PngWriter.h"

#include <gtest/gtest.h>

#include <QImage>

#include <random>

#include "ImageConversion.h"

namespace zd {
namespace {

// What a picture's alpha holds: every kind (clear, opaque and in between), opaque only, or
// opaque but for the very last pixel (found only once all rows but one went out as RGB).
enum class Alphas { mixed, opaque, lastPixelClear };

Image randomPremultiplied(int width, int height, unsigned seed, Alphas alphas) {
    std::mt19937 rng(seed);
    Image image(width, height);
    auto px = image.mutablePixels();
    for (auto& p : px) {
        const std::uint32_t kind = alphas == Alphas::mixed ? rng() % 4 : 1;
        const std::uint32_t a = kind == 0 ? 0 : kind == 1 ? 255 : rng() % 256;
        auto channel = [&] { return a == 0 ? 0u : static_cast<std::uint32_t>(rng() % (a + 1)); };
        p = Image::argb(a, channel(), channel(), channel());
    }
    if (alphas == Alphas::lastPixelClear)
        px.back() = 0;
    return image;
}

class PngWriterRoundTrip
    : public ::testing::TestWithParam<std::tuple<PngWriter::Filter, int, int>> {};

// Opaque pictures go out as RGB (colour type 2), others as RGBA (6); either way they decode to
// exactly the pixels given.
TEST_P(PngWriterRoundTrip, DecodesToTheSamePremultipliedPixels) {
    const auto [filter, level, threads] = GetParam();
    // The last size is many chunks of rows, compressed on several threads.
    for (const auto& [w, h] :
         {std::pair{1, 1}, std::pair{7, 3}, std::pair{129, 97}, std::pair{600, 410}})
        for (Alphas alphas : {Alphas::mixed, Alphas::opaque, Alphas::lastPixelClear}) {
            const Image image =
                randomPremultiplied(w, h, static_cast<unsigned>(w * 31 + h), alphas);
            const auto png = PngWriter::encode(image, {filter, level, threads});
            ASSERT_TRUE(png.has_value());
            EXPECT_EQ((*png)[25], alphas == Alphas::opaque ? 2 : 6) << "colour type";
            const QImage decoded =
                QImage::fromData(png->data(), static_cast<int>(png->size()), "PNG");
            ASSERT_FALSE(decoded.isNull()) << w << "x" << h;
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

}  // namespace
}  // namespace zd
