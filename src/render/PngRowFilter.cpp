#include "PngRowFilter.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace zd {

static_assert(std::endian::native == std::endian::little,
              "pixels are packed as little-endian words");

namespace {

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

std::uint8_t unpremultiplied(std::uint32_t sample, std::uint32_t reciprocal) {
    return static_cast<std::uint8_t>(std::min(255u, (sample * reciprocal + 32768u) >> 16));
}

// One row of premultiplied 0xAARRGGBB into straight R, G, B, A bytes.
void unpremultiplyRow(const std::uint32_t* src, std::size_t width, std::uint8_t* dst) {
    const auto& inv = unpremultiplyTable();
    for (std::size_t i = 0; i < width; ++i) {
        const std::uint32_t p = src[i];
        const std::uint32_t a = p >> 24;
        std::uint32_t straight = 0;  // R, G, B, A in memory order on a little-endian machine
        if (a == 255) {
            straight = ((p >> 16) & 0xffu) | (p & 0xff00ff00u) | ((p & 0xffu) << 16);
        } else if (a != 0) {
            const std::uint32_t m = inv[a];
            straight = unpremultiplied((p >> 16) & 0xffu, m) |
                       (static_cast<std::uint32_t>(unpremultiplied((p >> 8) & 0xffu, m)) << 8) |
                       (static_cast<std::uint32_t>(unpremultiplied(p & 0xffu, m)) << 16) |
                       (a << 24);
        }
        std::memcpy(dst + i * 4, &straight, 4);
    }
}

// One row of premultiplied 0xAARRGGBB into R, G, B bytes, alpha dropped; false when a pixel
// isn't opaque. Opaque pixels need no unpremultiplying, so the bytes equal the RGBA row's.
bool opaqueRow(const std::uint32_t* src, std::size_t width, std::uint8_t* dst) {
    std::uint32_t alphas = 0xff000000u;
    for (std::size_t i = 0; i < width; ++i) {
        const std::uint32_t p = src[i];
        alphas &= p;
        dst[i * 3] = static_cast<std::uint8_t>(p >> 16);
        dst[i * 3 + 1] = static_cast<std::uint8_t>(p >> 8);
        dst[i * 3 + 2] = static_cast<std::uint8_t>(p);
    }
    return alphas == 0xff000000u;
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

// Writes the filter type byte and the filtered row. `prev` is the straight row above, or all
// zeros for the first row. The filters look back one pixel, `kBytesPerPixel` bytes.
template <std::size_t kBytesPerPixel>
void filterRow(PngRowFilter::Type type, const std::uint8_t* raw, const std::uint8_t* prev,
               std::size_t rowBytes, std::uint8_t* out) {
    out[0] = static_cast<std::uint8_t>(type);
    std::uint8_t* o = out + 1;
    switch (type) {
        case PngRowFilter::Type::none:
            std::memcpy(o, raw, rowBytes);
            break;
        case PngRowFilter::Type::sub:
            std::memcpy(o, raw, kBytesPerPixel);
            for (std::size_t i = kBytesPerPixel; i < rowBytes; ++i)
                o[i] = static_cast<std::uint8_t>(raw[i] - raw[i - kBytesPerPixel]);
            break;
        case PngRowFilter::Type::up:
            for (std::size_t i = 0; i < rowBytes; ++i)
                o[i] = static_cast<std::uint8_t>(raw[i] - prev[i]);
            break;
        case PngRowFilter::Type::average:
            for (std::size_t i = 0; i < kBytesPerPixel; ++i)
                o[i] = static_cast<std::uint8_t>(raw[i] - (prev[i] >> 1));
            for (std::size_t i = kBytesPerPixel; i < rowBytes; ++i)
                o[i] = static_cast<std::uint8_t>(
                    raw[i] - ((static_cast<unsigned>(raw[i - kBytesPerPixel]) + prev[i]) >> 1));
            break;
        case PngRowFilter::Type::paeth:
            for (std::size_t i = 0; i < kBytesPerPixel; ++i)
                o[i] = static_cast<std::uint8_t>(raw[i] - prev[i]);
            for (std::size_t i = kBytesPerPixel; i < rowBytes; ++i)
                o[i] = static_cast<std::uint8_t>(raw[i] - paethPredictor(raw[i - kBytesPerPixel],
                                                                         prev[i],
                                                                         prev[i - kBytesPerPixel]));
            break;
    }
}

template <std::size_t kBytesPerPixel>
bool filterRowsOf(const Image& image, PngRowFilter::Type type, int first, int last,
                  std::uint8_t* out) {
    const auto width = static_cast<std::size_t>(image.width());
    const std::size_t rowBytes = width * kBytesPerPixel;
    std::vector<std::uint8_t> prev(rowBytes, 0);
    std::vector<std::uint8_t> raw(rowBytes);
    const std::uint32_t* pixels = image.pixels().data();
    const auto convert = [&](int y, std::uint8_t* dst) {
        const std::uint32_t* row = pixels + static_cast<std::size_t>(y) * width;
        if constexpr (kBytesPerPixel == 3) {
            return opaqueRow(row, width, dst);
        } else {
            unpremultiplyRow(row, width, dst);
            return true;
        }
    };
    const bool usesRowAbove = type != PngRowFilter::Type::none && type != PngRowFilter::Type::sub;
    if (first > 0 && usesRowAbove && !convert(first - 1, prev.data()))
        return false;
    for (int y = first; y < last; ++y) {
        if (!convert(y, raw.data()))
            return false;
        filterRow<kBytesPerPixel>(type, raw.data(), prev.data(), rowBytes,
                                  out + static_cast<std::size_t>(y - first) * (rowBytes + 1));
        std::swap(raw, prev);
    }
    return true;
}

}  // namespace

bool PngRowFilter::filterRows(const Image& image, Type type, int first, int last, std::uint8_t* out,
                              Channels channels) {
    return channels == Channels::rgb ? filterRowsOf<3>(image, type, first, last, out)
                                     : filterRowsOf<4>(image, type, first, last, out);
}

}  // namespace zd
