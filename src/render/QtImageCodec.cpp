#include "QtImageCodec.h"

#include <QImage>
#include <QImageReader>
#include <QString>

#include "ImageConversion.h"
#include "LargeBuffers.h"
#include "PngWriter.h"

namespace zd {

std::optional<Image> QtImageCodec::load(const std::string& path) const {
    std::error_code ec;
    const auto status = std::filesystem::status(path, ec);
    if (ec || !std::filesystem::is_regular_file(status))
        return std::nullopt;
    const auto size = std::filesystem::file_size(path, ec);
    if (ec)
        return std::nullopt;
    const auto modified = std::filesystem::last_write_time(path, ec);
    if (ec)
        return std::nullopt;
    {
        const std::lock_guard lock(mutex_);
        for (auto it = cache_.begin(); it != cache_.end(); ++it) {
            if (it->path == path && it->size == size && it->modified == modified) {
                cache_.splice(cache_.begin(), cache_, it);
                return cache_.front().image;
            }
        }
    }
    auto image = decode(path);
    if (!image)
        return std::nullopt;
    const std::lock_guard lock(mutex_);
    cache_.remove_if([&](const CacheEntry& e) { return e.path == path; });
    cache_.push_front({path, size, modified, *image});
    if (cache_.size() > kCachedPictures)
        cache_.pop_back();
    return image;
}

std::optional<Image> QtImageCodec::decode(const std::string& path) {
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
    const QImage::Format format = reader.imageFormat();
    const bool direct =
        size.isValid() && reader.transformation() == QImageIOHandler::TransformationNone &&
        (format == QImage::Format_RGB32 || format == QImage::Format_ARGB32_Premultiplied);
    if (direct) {
        // Opaque RGB32 (0xffRRGGBB) is already premultiplied ARGB: decode straight into the
        // image's own pixels and skip a copy of the whole picture.
        Image out = LargeBuffers::transparentImage(size.width(), size.height());
        if (out.isNull())
            return std::nullopt;
        auto pixels = out.mutablePixels();
        decoded = QImage(reinterpret_cast<uchar*>(pixels.data()), size.width(), size.height(),
                         static_cast<qsizetype>(size.width()) * 4, format);
        const uchar* buffer = decoded.constBits();
        if (!reader.read(&decoded) || decoded.isNull())
            return std::nullopt;
        if (decoded.constBits() == buffer && decoded.size() == size && decoded.format() == format)
            return out;
    } else if (!reader.read(&decoded) || decoded.isNull()) {
        return std::nullopt;
    }
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
