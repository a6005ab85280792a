#include "QtImageCodec.h"

#include <cstring>

#include <QBuffer>
#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QString>

#include "ImageConversion.h"
#include "LargeBuffers.h"
#include "PngWriter.h"

namespace zd {

namespace {

// Files larger than this aren't read at all (far beyond any picture the limits allow).
constexpr qint64 kMaxFileBytes = 1LL << 30;

// Whether JPEG data runs through its scans to the end-of-image marker. Decoding doesn't fail
// on a truncated file: it pads the missing data and returns a picture grey at the bottom, so
// the structure is checked first. Walks the marker segments, skips each scan's entropy-coded
// data (where 0xFF is followed by a stuffed 0x00 or a restart marker), and stops at the first
// end marker, so data appended after it (as some cameras do) doesn't matter.
bool jpegIsComplete(const QByteArray& bytes) {
    const auto* data = reinterpret_cast<const unsigned char*>(bytes.constData());
    const auto n = static_cast<std::size_t>(bytes.size());
    if (n < 4 || data[0] != 0xff || data[1] != 0xd8)
        return false;
    std::size_t i = 2;
    bool inScan = false;
    while (i + 1 < n) {
        if (inScan) {
            const void* found = std::memchr(data + i, 0xff, n - i);
            if (found == nullptr)
                return false;
            const auto j =
                static_cast<std::size_t>(static_cast<const unsigned char*>(found) - data);
            if (j + 1 >= n)
                return false;
            const unsigned char next = data[j + 1];
            if (next == 0x00 || next == 0xff || (next >= 0xd0 && next <= 0xd7)) {
                i = j + 1;
                continue;
            }
            inScan = false;
            i = j;
            continue;
        }
        if (data[i] != 0xff)
            return false;
        const unsigned char marker = data[i + 1];
        if (marker == 0xff) {
            ++i;  // fill byte
        } else if (marker == 0xd9) {
            return true;
        } else if (marker == 0x01 || (marker >= 0xd0 && marker <= 0xd7)) {
            i += 2;  // markers without a length
        } else {
            if (i + 3 >= n)
                return false;
            const std::size_t length = (std::size_t{data[i + 2]} << 8) | data[i + 3];
            if (length < 2)
                return false;
            i += 2 + length;
            inScan = marker == 0xda;
        }
    }
    return false;
}

}  // namespace

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
    QFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::ReadOnly) || file.size() > kMaxFileBytes)
        return std::nullopt;
    QByteArray bytes = file.readAll();
    file.close();
    QBuffer device(&bytes);
    device.open(QIODevice::ReadOnly);
    QImageReader reader(&device);
    // Photos carry their orientation in EXIF; the picture is shown the way it was taken.
    reader.setAutoTransform(true);
    // Qt refuses to allocate more than this for one decoded picture (in MiB), a second guard
    // for formats whose header doesn't state a size.
    reader.setAllocationLimit(static_cast<int>(kMaxPixels * 4 / (1024 * 1024)) + 1);
    if (!reader.canRead())
        return std::nullopt;
    if (reader.format() == "jpeg" && !jpegIsComplete(bytes))
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
        const uchar* pixelsAt = decoded.constBits();
        if (!reader.read(&decoded) || decoded.isNull())
            return std::nullopt;
        if (decoded.constBits() == pixelsAt && decoded.size() == size && decoded.format() == format)
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
