#include "PngInspector.h"

#include <libdeflate.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <vector>

namespace zd {

namespace {

std::uint32_t bigEndian32(const std::uint8_t* p) {
    return (std::uint32_t{p[0]} << 24) | (std::uint32_t{p[1]} << 16) | (std::uint32_t{p[2]} << 8) |
           p[3];
}

int samplesPerPixel(int colourType) {
    switch (colourType) {
        case 2:
            return 3;
        case 4:
            return 2;
        case 6:
            return 4;
        default:
            return 1;
    }
}

bool validDepth(int colourType, int depth) {
    switch (colourType) {
        case 0:
            return depth == 1 || depth == 2 || depth == 4 || depth == 8 || depth == 16;
        case 3:
            return depth == 1 || depth == 2 || depth == 4 || depth == 8;
        case 2:
        case 4:
        case 6:
            return depth == 8 || depth == 16;
        default:
            return false;
    }
}

// One reduced image: the whole picture, or one of Adam7's seven passes.
struct Pass {
    int x0, y0, dx, dy;
};
constexpr std::array<Pass, 7> kAdam7{{{0, 0, 8, 8},
                                      {4, 0, 8, 8},
                                      {0, 4, 4, 8},
                                      {2, 0, 4, 4},
                                      {0, 2, 2, 4},
                                      {1, 0, 2, 2},
                                      {0, 1, 1, 2}}};

int passExtent(int size, int start, int step) {
    return size > start ? (size - start + step - 1) / step : 0;
}

std::uint8_t paeth(int a, int b, int c) {
    const int p = a + b - c;
    const int pa = std::abs(p - a);
    const int pb = std::abs(p - b);
    const int pc = std::abs(p - c);
    if (pa <= pb && pa <= pc)
        return static_cast<std::uint8_t>(a);
    return static_cast<std::uint8_t>(pb <= pc ? b : c);
}

// Undoes the filter of one scanline in place; `prev` is the unfiltered line above (zeros for
// the first). False for an unknown filter type.
bool unfilter(std::uint8_t type, std::uint8_t* line, const std::uint8_t* prev, std::size_t bytes,
              std::size_t bpp) {
    for (std::size_t i = 0; i < bytes; ++i) {
        const int a = i >= bpp ? line[i - bpp] : 0;
        const int b = prev[i];
        const int c = i >= bpp ? prev[i - bpp] : 0;
        int predicted = 0;
        switch (type) {
            case 0:
                return true;
            case 1:
                predicted = a;
                break;
            case 2:
                predicted = b;
                break;
            case 3:
                predicted = (a + b) / 2;
                break;
            case 4:
                predicted = paeth(a, b, c);
                break;
            default:
                return false;
        }
        line[i] = static_cast<std::uint8_t>(line[i] + predicted);
    }
    return true;
}

// Sample `index` of a scanline, for any bit depth.
unsigned sampleAt(const std::uint8_t* line, std::size_t index, int depth) {
    if (depth == 16)
        return (unsigned{line[index * 2]} << 8) | line[index * 2 + 1];
    if (depth == 8)
        return line[index];
    const std::size_t bit = index * static_cast<std::size_t>(depth);
    const unsigned shift = 8u - static_cast<unsigned>(depth) - static_cast<unsigned>(bit % 8);
    return (line[bit / 8] >> shift) & ((1u << depth) - 1u);
}

struct Transparency {
    std::vector<std::uint8_t> paletteAlpha;      // colour type 3
    std::optional<std::array<unsigned, 3>> key;  // colour types 0 (one value) and 2
};

}  // namespace

Expected<PngInspector::Facts, std::string> PngInspector::inspect(
    std::span<const std::uint8_t> file) {
    static constexpr std::uint8_t kSignature[8] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'};
    if (file.size() < 8 || std::memcmp(file.data(), kSignature, 8) != 0)
        return unexpected(std::string("not a PNG file"));

    Facts facts;
    bool haveHeader = false;
    bool ended = false;
    Transparency transparency;
    std::vector<std::uint8_t> compressed;
    for (std::size_t at = 8; !ended;) {
        if (file.size() - at < 12)
            return unexpected(std::string("truncated PNG (no IEND chunk)"));
        const std::uint32_t length = bigEndian32(file.data() + at);
        if (length > file.size() - at - 12)
            return unexpected(std::string("truncated PNG (a chunk runs past the end)"));
        const std::uint8_t* type = file.data() + at + 4;
        const std::uint8_t* data = type + 4;
        if (libdeflate_crc32(0, type, length + 4) != bigEndian32(data + length))
            return unexpected(std::string("damaged PNG (a chunk's CRC doesn't match)"));
        const std::string name(reinterpret_cast<const char*>(type), 4);
        if (!haveHeader && name != "IHDR")
            return unexpected(std::string("damaged PNG (IHDR isn't the first chunk)"));
        if (name == "IHDR") {
            if (length != 13)
                return unexpected(std::string("damaged PNG (IHDR of the wrong length)"));
            facts.width = static_cast<int>(std::min<std::uint32_t>(bigEndian32(data), 1u << 30));
            facts.height =
                static_cast<int>(std::min<std::uint32_t>(bigEndian32(data + 4), 1u << 30));
            facts.bitDepth = data[8];
            facts.colourType = data[9];
            facts.interlaced = data[12] == 1;
            if (facts.width == 0 || facts.height == 0 ||
                !validDepth(facts.colourType, facts.bitDepth) || data[10] != 0 || data[11] != 0 ||
                data[12] > 1)
                return unexpected(std::string("damaged PNG (IHDR holds impossible values)"));
            if (static_cast<long long>(facts.width) * facts.height > kMaxPixels)
                return unexpected(std::string("picture too large to read"));
            haveHeader = true;
        } else if (name == "tRNS") {
            facts.alphaChannel = true;
            if (facts.colourType == 3) {
                transparency.paletteAlpha.assign(data, data + length);
            } else if (facts.colourType == 0 && length >= 2) {
                transparency.key = {(unsigned{data[0]} << 8) | data[1], 0, 0};
            } else if (facts.colourType == 2 && length >= 6) {
                transparency.key = {(unsigned{data[0]} << 8) | data[1],
                                    (unsigned{data[2]} << 8) | data[3],
                                    (unsigned{data[4]} << 8) | data[5]};
            }
        } else if (name == "IDAT") {
            compressed.insert(compressed.end(), data, data + length);
        } else if (name == "IEND") {
            ended = true;
        }
        at += 12 + std::size_t{length};
    }
    if (compressed.empty())
        return unexpected(std::string("damaged PNG (no image data)"));
    if (facts.colourType == 4 || facts.colourType == 6)
        facts.alphaChannel = true;

    // The scanlines of every pass, filter bytes included, in order.
    const int samples = samplesPerPixel(facts.colourType);
    const std::size_t bitsPerPixel = static_cast<std::size_t>(samples) * facts.bitDepth;
    const std::size_t bpp = std::max<std::size_t>(1, bitsPerPixel / 8);
    std::vector<Pass> passes;
    if (facts.interlaced)
        passes.assign(kAdam7.begin(), kAdam7.end());
    else
        passes.push_back({0, 0, 1, 1});
    std::size_t expected = 0;
    for (const Pass& p : passes) {
        const auto w = static_cast<std::size_t>(passExtent(facts.width, p.x0, p.dx));
        const auto h = static_cast<std::size_t>(passExtent(facts.height, p.y0, p.dy));
        if (w > 0 && h > 0)
            expected += h * (1 + (w * bitsPerPixel + 7) / 8);
    }
    std::vector<std::uint8_t> raw(expected);
    struct Decompressor {
        void operator()(libdeflate_decompressor* d) const { libdeflate_free_decompressor(d); }
    };
    const std::unique_ptr<libdeflate_decompressor, Decompressor> inflater(
        libdeflate_alloc_decompressor());
    if (!inflater)
        return unexpected(std::string("out of memory"));
    std::size_t produced = 0;
    if (libdeflate_zlib_decompress(inflater.get(), compressed.data(), compressed.size(), raw.data(),
                                   raw.size(), &produced) != LIBDEFLATE_SUCCESS ||
        produced != expected)
        return unexpected(std::string("damaged PNG (the image data doesn't decompress)"));

    const unsigned opaque = (1u << facts.bitDepth) - 1u;
    int left = facts.width, right = -1, topRow = facts.height, bottomRow = -1;
    std::uint8_t* line = raw.data();
    for (const Pass& p : passes) {
        const int w = passExtent(facts.width, p.x0, p.dx);
        const int h = passExtent(facts.height, p.y0, p.dy);
        if (w == 0 || h == 0)
            continue;
        const std::size_t lineBytes = (static_cast<std::size_t>(w) * bitsPerPixel + 7) / 8;
        std::vector<std::uint8_t> zeros(lineBytes, 0);
        const std::uint8_t* prev = zeros.data();
        for (int py = 0; py < h; ++py) {
            std::uint8_t* pixels = line + 1;
            if (!unfilter(line[0], pixels, prev, lineBytes, bpp))
                return unexpected(std::string("damaged PNG (an unknown row filter)"));
            for (int px = 0; px < w; ++px) {
                const auto first = static_cast<std::size_t>(px) * static_cast<std::size_t>(samples);
                bool isOpaque = true;
                if (facts.colourType == 4 || facts.colourType == 6) {
                    isOpaque = sampleAt(pixels, first + samples - 1, facts.bitDepth) == opaque;
                } else if (facts.colourType == 3) {
                    const unsigned index = sampleAt(pixels, first, facts.bitDepth);
                    isOpaque = index >= transparency.paletteAlpha.size() ||
                               transparency.paletteAlpha[index] == 255;
                } else if (transparency.key) {
                    bool matches = true;
                    for (int s = 0; s < samples; ++s)
                        matches = matches && sampleAt(pixels, first + static_cast<std::size_t>(s),
                                                      facts.bitDepth) ==
                                                 (*transparency.key)[static_cast<std::size_t>(s)];
                    isOpaque = !matches;
                }
                if (!isOpaque) {
                    facts.transparentPixels = true;
                    continue;
                }
                const int x = p.x0 + px * p.dx;
                const int y = p.y0 + py * p.dy;
                left = std::min(left, x);
                right = std::max(right, x);
                topRow = std::min(topRow, y);
                bottomRow = std::max(bottomRow, y);
            }
            prev = pixels;
            line += 1 + lineBytes;
        }
    }
    if (right >= left) {
        facts.opaqueWidth = right - left + 1;
        facts.opaqueHeight = bottomRow - topRow + 1;
    }
    return facts;
}

}  // namespace zd
