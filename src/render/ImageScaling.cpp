#include "ImageScaling.h"

#include <cstdint>

namespace zd {

namespace {

// Mean of four premultiplied pixels, all channels at once: red and blue in one word, alpha
// and green in the other, each channel with room for the carry.
inline std::uint32_t mean4(std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t d) {
    constexpr std::uint32_t kMask = 0x00ff00ffu;
    const std::uint32_t rb = (a & kMask) + (b & kMask) + (c & kMask) + (d & kMask) + 0x00020002u;
    const std::uint32_t ag = ((a >> 8) & kMask) + ((b >> 8) & kMask) + ((c >> 8) & kMask) +
                             ((d >> 8) & kMask) + 0x00020002u;
    return ((rb >> 2) & kMask) | (((ag >> 2) & kMask) << 8);
}

}  // namespace

QImage ImageScaling::halve(const QImage& image) {
    const QImage src = image.format() == QImage::Format_ARGB32_Premultiplied
                           ? image
                           : image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const int w = src.width() / 2;
    const int h = src.height() / 2;
    if (w <= 0 || h <= 0)
        return src;
    QImage out(w, h, QImage::Format_ARGB32_Premultiplied);
    if (out.isNull())
        return src;
    for (int y = 0; y < h; ++y) {
        const auto* r0 = reinterpret_cast<const std::uint32_t*>(src.constScanLine(2 * y));
        const auto* r1 = reinterpret_cast<const std::uint32_t*>(src.constScanLine(2 * y + 1));
        auto* o = reinterpret_cast<std::uint32_t*>(out.scanLine(y));
        for (std::ptrdiff_t x = 0; x < w; ++x)
            o[x] = mean4(r0[2 * x], r0[2 * x + 1], r1[2 * x], r1[2 * x + 1]);
    }
    return out;
}

void ImageScaling::reduceForDrawing(QImage& image, QRectF& source, QSizeF destinationSize) {
    while (source.width() >= 2 * destinationSize.width() &&
           source.height() >= 2 * destinationSize.height() && image.width() >= 2 &&
           image.height() >= 2) {
        image = halve(image);
        source = QRectF(source.x() / 2, source.y() / 2, source.width() / 2, source.height() / 2);
    }
}

}  // namespace zd
