#include "PngWriter.h"

#include <libdeflate.h>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <memory>

#include "ParallelZlibCompressor.h"

namespace zd {

namespace {

using Clock = std::chrono::steady_clock;

void putBigEndian32(std::uint8_t* p, std::uint32_t v) {
    p[0] = static_cast<std::uint8_t>(v >> 24);
    p[1] = static_cast<std::uint8_t>(v >> 16);
    p[2] = static_cast<std::uint8_t>(v >> 8);
    p[3] = static_cast<std::uint8_t>(v);
}

// Fills in the length, type and CRC of a chunk whose data is already in place after an
// 8-byte gap at `start`, and whose 4 CRC bytes follow the data.
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

// The rows in groups of about one libdeflate block each, converted, filtered and compressed
// on the worker threads (at the fastest level) or on this one. With `rgb` a chunk that finds a
// pixel that isn't opaque sets `sawTransparency`, and every chunk from then on is left empty:
// the stream is then worthless and the caller starts again with RGBA.
bool compressRows(const Image& image, const PngWriter::Options& options,
                  PngRowFilter::Channels channels, std::atomic<bool>& sawTransparency,
                  PngWriter::Timings& timings, std::vector<std::uint8_t>& png) {
    const std::size_t scanline = PngRowFilter::scanlineBytes(image.width(), channels);
    const int rowsPerChunk =
        static_cast<int>(std::max<std::size_t>(1, ParallelZlibCompressor::kChunkBytes / scanline));
    const int rows = image.height();
    const auto chunks = static_cast<std::size_t>((rows + rowsPerChunk - 1) / rowsPerChunk);
    std::atomic<std::chrono::nanoseconds::rep> rowTime{0};  // added up across threads
    const auto source = [&](std::size_t index, std::vector<std::uint8_t>& bytes) {
        const auto started = Clock::now();
        const int first = static_cast<int>(index) * rowsPerChunk;
        const int last = std::min(rows, first + rowsPerChunk);
        bytes.resize(static_cast<std::size_t>(last - first) * scanline);
        if (sawTransparency ||
            !PngRowFilter::filterRows(image, options.filter, first, last, bytes.data(), channels)) {
            sawTransparency = true;
            bytes.clear();
        }
        rowTime +=
            std::chrono::duration_cast<std::chrono::nanoseconds>(Clock::now() - started).count();
    };
    const bool parallel = options.compressionLevel == 1;
    const int threads = parallel ? std::clamp(options.threads, 1, 8) : 1;
    const auto started = Clock::now();
    const bool done = parallel ? ParallelZlibCompressor::compress(chunks, source, threads, png)
                               : ParallelZlibCompressor::compressAsOneStream(
                                     chunks, source, options.compressionLevel, png);
    const auto rowsSpent = std::chrono::nanoseconds(rowTime.load());
    timings.rows += rowsSpent;
    // Whatever wasn't spent on rows went to compressing.
    timings.deflate +=
        std::chrono::duration_cast<std::chrono::nanoseconds>((Clock::now() - started) * threads) -
        rowsSpent;
    return done;
}

}  // namespace

std::optional<std::vector<std::uint8_t>> PngWriter::encode(const Image& image) {
    return encode(image, Options{});
}

std::optional<std::vector<std::uint8_t>> PngWriter::encode(const Image& image,
                                                           const Options& options,
                                                           Timings* timings) {
    if (image.isNull())
        return std::nullopt;
    const auto width = static_cast<std::size_t>(image.width());
    const auto height = static_cast<std::size_t>(image.height());
    if (image.pixels().size() < width * height)
        return std::nullopt;
    // One IDAT chunk holds at most 2^31 - 1 bytes; pictures that large are far beyond any
    // canvas, so they are refused rather than split.
    if (PngRowFilter::scanlineBytes(image.width()) * height > 0x7fffffffu / 2)
        return std::nullopt;

    try {
        static constexpr std::uint8_t kSignature[8] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'};
        std::vector<std::uint8_t> png(kSignature, kSignature + 8);
        // The header's place; its colour type is known once the rows have been through.
        const std::size_t headerStart = png.size();
        png.resize(headerStart + 12 + 13);

        // The zlib stream is compressed straight into the IDAT chunk's place in the file. An
        // opaque picture (any over a colour or picture background) goes without the alpha
        // channel, which some stores refuse; its pixels are those the RGBA file would hold.
        // Whether it is opaque is learnt while converting the rows, so a picture with
        // transparency is converted a second time, usually after a row or two of the first.
        const std::size_t idatStart = png.size();
        Timings spent;
        PngRowFilter::Channels channels = PngRowFilter::Channels::rgb;
        std::atomic<bool> sawTransparency{false};
        png.resize(idatStart + 8);
        if (!compressRows(image, options, channels, sawTransparency, spent, png))
            return std::nullopt;
        if (sawTransparency) {
            channels = PngRowFilter::Channels::rgba;
            sawTransparency = false;
            png.resize(idatStart + 8);
            if (!compressRows(image, options, channels, sawTransparency, spent, png))
                return std::nullopt;
        }
        const std::size_t idatLength = png.size() - idatStart - 8;
        png.resize(png.size() + 4);
        sealChunk(png, idatStart, "IDAT", idatLength);
        appendChunk(png, "IEND", {});

        std::uint8_t* header = png.data() + headerStart + 8;
        putBigEndian32(header, static_cast<std::uint32_t>(width));
        putBigEndian32(header + 4, static_cast<std::uint32_t>(height));
        header[8] = 8;                                                // bits per sample
        header[9] = channels == PngRowFilter::Channels::rgb ? 2 : 6;  // colour type: RGB, RGBA
        header[10] = 0;                                               // deflate
        header[11] = 0;  // adaptive filtering (one filter type byte per row)
        header[12] = 0;  // not interlaced
        sealChunk(png, headerStart, "IHDR", 13);
        if (timings != nullptr)
            *timings = spent;
        return png;
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
}

}  // namespace zd
