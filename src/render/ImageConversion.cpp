#include "ImageConversion.h"

#include <cstring>

namespace zd {

QImage toQImage(const Image& image) {
    if (image.isNull()) return {};
    QImage out(image.width(), image.height(), QImage::Format_ARGB32_Premultiplied);
    const auto src = image.pixels();
    for (int y = 0; y < image.height(); ++y) {
        std::memcpy(out.scanLine(y), src.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(image.width()),
                    static_cast<std::size_t>(image.width()) * 4);
    }
    return out;
}

Image fromQImage(const QImage& image) {
    if (image.isNull()) return {};
    const QImage src = image.format() == QImage::Format_ARGB32_Premultiplied
                           ? image
                           : image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    Image out(src.width(), src.height());
    auto dst = out.mutablePixels();
    for (int y = 0; y < src.height(); ++y) {
        std::memcpy(dst.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(src.width()), src.constScanLine(y),
                    static_cast<std::size_t>(src.width()) * 4);
    }
    return out;
}

}  // namespace zd
