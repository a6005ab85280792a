#include "PngInspector.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QImage>

namespace zd {
namespace {

std::vector<std::uint8_t> qtPng(const QImage& image) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return {bytes.begin(), bytes.end()};
}

// A 40 × 30 picture, opaque but for a 5-pixel clear border when `border` is set.
QImage picture(QImage::Format format, bool border) {
    QImage image(40, 30, QImage::Format_ARGB32);
    image.fill(QColor(30, 120, 200));
    if (border) {
        for (int y = 0; y < 30; ++y)
            for (int x = 0; x < 40; ++x)
                if (x < 5 || y < 5 || x >= 35 || y >= 25)
                    image.setPixel(x, y, 0);
    }
    return image.convertToFormat(format);
}

struct FormatCase {
    QImage::Format format;
    bool border;
    int colourType;
    int bitDepth;
    bool alphaChannel;
    bool transparentPixels;
};

class PngInspectorFormats : public ::testing::TestWithParam<FormatCase> {};

TEST_P(PngInspectorFormats, ReadsHeaderAlphaAndTheOpaqueBox) {
    const auto& c = GetParam();
    const auto facts = PngInspector::inspect(qtPng(picture(c.format, c.border)));
    ASSERT_TRUE(facts.hasValue()) << facts.error();
    EXPECT_EQ(facts->width, 40);
    EXPECT_EQ(facts->height, 30);
    EXPECT_EQ(facts->colourType, c.colourType);
    EXPECT_EQ(facts->bitDepth, c.bitDepth);
    EXPECT_FALSE(facts->interlaced);
    EXPECT_EQ(facts->alphaChannel, c.alphaChannel);
    EXPECT_EQ(facts->transparentPixels, c.transparentPixels);
    EXPECT_EQ(facts->opaqueWidth, c.border ? 30 : 40);
    EXPECT_EQ(facts->opaqueHeight, c.border ? 20 : 30);
}

INSTANTIATE_TEST_SUITE_P(
    QtWritten, PngInspectorFormats,
    ::testing::Values(FormatCase{QImage::Format_RGB32, false, 2, 8, false, false},
                      FormatCase{QImage::Format_ARGB32, false, 6, 8, true, false},
                      FormatCase{QImage::Format_ARGB32, true, 6, 8, true, true},
                      FormatCase{QImage::Format_RGBA64, true, 6, 16, true, true},
                      FormatCase{QImage::Format_Grayscale8, false, 0, 8, false, false},
                      FormatCase{QImage::Format_Indexed8, true, 3, 8, true, true}));

TEST(PngInspector, DamagedFilesGiveTheReason) {
    const auto good = qtPng(picture(QImage::Format_RGB32, false));
    auto flipped = good;
    flipped[40] ^= 0x55u;  // inside the first chunk after IHDR
    const std::vector<std::pair<std::vector<std::uint8_t>, std::string>> cases{
        {{'G', 'I', 'F', '8'}, "not a PNG file"},
        {std::vector<std::uint8_t>(good.begin(), good.end() - 20), "truncated PNG"},
        {flipped, "damaged PNG"}};
    for (const auto& [bytes, reason] : cases) {
        const auto facts = PngInspector::inspect(bytes);
        ASSERT_FALSE(facts.hasValue());
        EXPECT_EQ(facts.error().rfind(reason, 0), 0u) << facts.error();
    }
}

}  // namespace
}  // namespace zd
