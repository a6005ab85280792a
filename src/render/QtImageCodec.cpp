#include "QtImageCodec.h"

#include <QImage>
#include <QImageReader>
#include <QString>

#include "ImageConversion.h"
#include "PngWriter.h"

namespace zd {

std::optional<Image> QtImageCodec::load(const std::string& path) const {
    QImageReader reader(QString::fromStdString(path));
    // Photos carry their orientation in EXIF; the picture is shown the way it was taken.
    reader.setAutoTransform(true);
    // Qt refuses to allocate more than this for one decoded picture (in MiB), a second guard
    // for formats whose header doesn't state a size.
    reader.setAllocationLimit(static_cast<int>(kMaxPixels * 4 / (1024 * 1024)) + 1);
    if (!reader.canRead())
        return std::nullopt;
    const QSize size = reader.size();
    if (size.isValid()) {
        if (size.width() <= 0 || size.height() <= 0 || size.width() > kMaxSide ||
            size.height() > kMaxSide ||
            static_cast<long long>(size.width()) * size.height() > kMaxPixels)
            return std::nullopt;
    }
    QImage decoded;
    if (!reader.read(&decoded) || decoded.isNull())
        return std::nullopt;
    if (decoded.width() > kMaxSide || decoded.height() > kMaxSide)
        return std::nullopt;
    if (decoded.format() != QImage::Format_ARGB32_Premultiplied)
        decoded.convertTo(QImage::Format_ARGB32_Premultiplied);
    if (decoded.isNull())
        return std::nullopt;
    return fromQImage(decoded);
}

std::optional<std::vector<std::uint8_t>> QtImageCodec::encodePNG(const Image& image) const {
    return PngWriter::encode(image);
}

}  // namespace zd
