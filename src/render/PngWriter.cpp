#include "PngWriter.h"

#include <libdeflate.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <thread>

#include "LargeBuffers.h"

namespace zd {

namespace {

constexpr std::size_t kBytesPerPixel = 4;

// 16.16 reciprocals that turn a premultiplied sample back into a straight one, rounded to
// the nearest value so that premultiplying again gives the original sample.
const std::array<std::uint32_t, 256>& unpremultiplyTable() {
    static const std::array<std::uint32_t, 256> table = [] {
        std::array<std::uint32_t, 256> t{};
        for (std::uint32_t a = 1; a < 256; ++a)
            t[a] = (255u * 65536u + a / 2) / a;
        return t;
    }();
    return table;
}

// One row of premultiplied 0xAARRGGBB into straight R, G, B, A bytes.
void unpremultiplyRow(const std::uint32_t* src, std::size_t width, std::uint8_t* dst) {
    const auto& inv = unpremultiplyTable();
    for (std::size_t i = 0; i < width; ++i) {
        const std::uint32_t p = src[i];
        const std::uint32_t a = p >> 24;
        std::uint8_t* d = dst + i * kBytesPerPixel;
        if (a == 255) {
            d[0] = static_cast<std::uint8_t>(p >> 16);
            d[1] = static_cast<std::uint8_t>(p >> 8);
            d[2] = static_cast<std::uint8_t>(p);
            d[3] = 255;
        } else if (a == 0) {
            std::memset(d, 0, kBytesPerPixel);
        } else {
            const std::uint32_t m = inv[a];
            d[0] =
                static_cast<std::uint8_t>(std::min(255u, (((p >> 16) & 0xffu) * m + 32768u) >> 16));
            d[1] =
                static_cast<std::uint8_t>(std::min(255u, (((p >> 8) & 0xffu) * m + 32768u) >> 16));
            d[2] = static_cast<std::uint8_t>(std::min(255u, ((p & 0xffu) * m + 32768u) >> 16));
            d[3] = static_cast<std::uint8_t>(a);
        }
    }
}

std::uint8_t paethPredictor(int a, int b, int c) {
    const int p = a + b - c;
    const int pa = std::abs(p - a);
    const int pb = std::abs(p - b);
    const int pc = std::abs(p - c);
    if (pa <= pb && pa <= pc)
        return static_cast<std::uint8_t>(a);
    if (pb <= pc)
        return static_cast<std::uint8_t>(b);
    return static_cast<std::uint8_t>(c);
}

// Writes the filter type byte and the filtered row. `prev` is the raw row above, or all zeros
// for the first row.
void filterRow(PngWriter::Filter filter, const std::uint8_t* raw, const std::uint8_t* prev,
               std::size_t rowBytes, std::uint8_t* out) {
    out[0] = static_cast<std::uint8_t>(filter);
    std::uint8_t* o = out + 1;
    switch (filter) {
        case PngWriter::Filter::none:
            std::memcpy(o, raw, rowBytes);
            break;
        case PngWriter::Filter::up:
            for (std::size_t i = 0; i < rowBytes; ++i)
                o[i] = static_cast<std::uint8_t>(raw[i] - prev[i]);
            break;
        case PngWriter::Filter::sub:
            std::memcpy(o, raw, kBytesPerPixel);
            for (std::size_t i = kBytesPerPixel; i < rowBytes; ++i)
                o[i] = static_cast<std::uint8_t>(raw[i] - raw[i - kBytesPerPixel]);
            break;
        case PngWriter::Filter::paeth:
            for (std::size_t i = 0; i < kBytesPerPixel; ++i)
                o[i] = static_cast<std::uint8_t>(raw[i] - prev[i]);
            for (std::size_t i = kBytesPerPixel; i < rowBytes; ++i)
                o[i] = static_cast<std::uint8_t>(raw[i] - paethPredictor(raw[i - kBytesPerPixel],
                                                                         prev[i],
                                                                         prev[i - kBytesPerPixel]));
            break;
    }
}

// Converts and filters rows [first, last) into `out` (rows of 1 + rowBytes bytes).
void filterRows(const Image& image, PngWriter::Filter filter, int first, int last,
                std::uint8_t* out) {
    const auto width = static_cast<std::size_t>(image.width());
    const std::size_t rowBytes = width * kBytesPerPixel;
    std::vector<std::uint8_t> prev(rowBytes, 0);
    std::vector<std::uint8_t> raw(rowBytes);
    const std::uint32_t* pixels = image.pixels().data();
    if (first > 0 && filter != PngWriter::Filter::none && filter != PngWriter::Filter::sub)
        unpremultiplyRow(pixels + static_cast<std::size_t>(first - 1) * width, width, prev.data());
    for (int y = first; y < last; ++y) {
        unpremultiplyRow(pixels + static_cast<std::size_t>(y) * width, width, raw.data());
        filterRow(filter, raw.data(), prev.data(), rowBytes,
                  out + static_cast<std::size_t>(y - first) * (rowBytes + 1));
        std::swap(raw, prev);
    }
}

void putBigEndian32(std::uint8_t* p, std::uint32_t v) {
    p[0] = static_cast<std::uint8_t>(v >> 24);
    p[1] = static_cast<std::uint8_t>(v >> 16);
    p[2] = static_cast<std::uint8_t>(v >> 8);
    p[3] = static_cast<std::uint8_t>(v);
}

// Appends a chunk whose data is already in place after an 8-byte gap at `start`.
void sealChunk(std::vector<std::uint8_t>& png, std::size_t start, const char type[4],
               std::size_t dataLength) {
    putBigEndian32(png.data() + start, static_cast<std::uint32_t>(dataLength));
    std::memcpy(png.data() + start + 4, type, 4);
    const std::uint32_t crc = libdeflate_crc32(0, png.data() + start + 4, dataLength + 4);
    putBigEndian32(png.data() + start + 8 + dataLength, crc);
}

void appendChunk(std::vector<std::uint8_t>& png, const char type[4],
                 const std::vector<std::uint8_t>& data) {
    const std::size_t start = png.size();
    png.resize(start + 12 + data.size());
    if (!data.empty())
        std::memcpy(png.data() + start + 8, data.data(), data.size());
    sealChunk(png, start, type, data.size());
}

struct CompressorDeleter {
    void operator()(libdeflate_compressor* c) const { libdeflate_free_compressor(c); }
};

}  // namespace

std::optional<std::vector<std::uint8_t>> PngWriter::encode(const Image& image) {
    return encode(image, Options{});
}

std::optional<std::vector<std::uint8_t>> PngWriter::encode(const Image& image,
                                                           const Options& options,
                                                           Timings* timings) {
    const auto started = std::chrono::steady_clock::now();
    if (image.isNull())
        return std::nullopt;
    const auto width = static_cast<std::size_t>(image.width());
    const auto height = static_cast<std::size_t>(image.height());
    if (image.pixels().size() < width * height)
        return std::nullopt;
    const std::size_t stride = width * kBytesPerPixel + 1;
    // A PNG's IDAT stream is limited to 2^31 - 1 bytes per chunk; pictures that large are
    // far beyond any canvas, so they are refused rather than split.
    if (stride * height > 0x7fffffffu / 2)
        return std::nullopt;

    const auto filtered = LargeBuffers::bytes(stride * height);
    if (!filtered)
        return std::nullopt;
    const int threads = std::clamp(options.threads, 1, 8);
    const int rows = image.height();
    if (threads == 1 || rows < 64) {
        filterRows(image, options.filter, 0, rows, filtered.get());
    } else {
        std::vector<std::thread> workers;
        for (int t = 1; t < threads; ++t) {
            const int first = rows * t / threads;
            const int last = rows * (t + 1) / threads;
            workers.emplace_back([&, first, last] {
                filterRows(image, options.filter, first, last,
                           filtered.get() + static_cast<std::size_t>(first) * stride);
            });
        }
        filterRows(image, options.filter, 0, rows / threads, filtered.get());
        for (auto& w : workers)
            w.join();
    }

    const auto filteredAt = std::chrono::steady_clock::now();
    const std::unique_ptr<libdeflate_compressor, CompressorDeleter> compressor(
        libdeflate_alloc_compressor(std::clamp(options.compressionLevel, 0, 12)));
    if (!compressor)
        return std::nullopt;

    static constexpr std::uint8_t kSignature[8] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'};
    std::vector<std::uint8_t> png(kSignature, kSignature + 8);
    std::vector<std::uint8_t> header(13);
    putBigEndian32(header.data(), static_cast<std::uint32_t>(width));
    putBigEndian32(header.data() + 4, static_cast<std::uint32_t>(height));
    header[8] = 8;   // bits per sample
    header[9] = 6;   // colour type: RGBA
    header[10] = 0;  // deflate
    header[11] = 0;  // adaptive filtering (one filter type byte per row)
    header[12] = 0;  // not interlaced
    appendChunk(png, "IHDR", header);

    // The zlib stream is compressed straight into the IDAT chunk's place in the file.
    const std::size_t bound = libdeflate_zlib_compress_bound(compressor.get(), stride * height);
    const std::size_t idatStart = png.size();
    png.resize(idatStart + 12 + bound);
    const std::size_t compressed = libdeflate_zlib_compress(
        compressor.get(), filtered.get(), stride * height, png.data() + idatStart + 8, bound);
    if (compressed == 0)
        return std::nullopt;
    png.resize(idatStart + 12 + compressed);
    sealChunk(png, idatStart, "IDAT", compressed);
    appendChunk(png, "IEND", {});
    if (timings != nullptr) {
        timings->rows = filteredAt - started;
        timings->deflate = std::chrono::steady_clock::now() - filteredAt;
    }
    return png;
}

}  // namespace zd
