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

TEST(PngInspector, ReadsHeaderAlphaAndTheOpaqueBoxOfQtWrittenFiles) {
    const struct {
        QImage::Format format;
        bool border;
        int colourType, bitDepth;
        bool alphaChannel, transparentPixels;
    } cases[] = {{QImage::Format_RGB32, false, 2, 8, false, false},
                 {QImage::Format_ARGB32, false, 6, 8, true, false},
                 {QImage::Format_ARGB32, true, 6, 8, true, true},
                 {QImage::Format_RGBA64, true, 6, 16, true, true},
                 {QImage::Format_Grayscale8, false, 0, 8, false, false},
                 {QImage::Format_Indexed8, true, 3, 8, true, true}};
    for (const auto& c : cases) {
        const auto facts = PngInspector::inspect(qtPng(picture(c.format, c.border)));
        ASSERT_TRUE(facts.hasValue()) << facts.error();
        EXPECT_EQ(std::tuple(facts->width, facts->height, facts->interlaced),
                  std::tuple(40, 30, false));
        EXPECT_EQ(std::tuple(facts->colourType, facts->bitDepth, facts->alphaChannel,
                             facts->transparentPixels),
                  std::tuple(c.colourType, c.bitDepth, c.alphaChannel, c.transparentPixels))
            << c.format;
        EXPECT_EQ(std::pair(facts->opaqueWidth, facts->opaqueHeight),
                  c.border ? std::pair(30, 20) : std::pair(40, 30))
            << c.format;
    }
}

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
