#pragma once
// Our own PNG encoder: premultiplied ARGB in, an 8-bit RGBA PNG (alpha always kept) out.
// Saving pictures is dominated by compression, so the filter and the deflate level are
// chosen by measurement (see bench/): the Up filter and a low libdeflate level are several
// times faster than libpng's defaults for at most a tenth more bytes on screenshots.
// Row conversion and filtering run on two threads; deflate runs as one stream.

#include <chrono>
#include <cstdint>
#include <optional>
#include <vector>

#include "model/Image.h"

namespace zd {

class PngWriter {
  public:
    enum class Filter { none = 0, sub = 1, up = 2, paeth = 4 };  // PNG filter type numbers

    struct Options {
        Filter filter = Filter::up;
        int compressionLevel = 1;  // libdeflate level, 0…12
        int threads = 2;           // for unpremultiplying and filtering rows
    };

    // Where the time went, for the benchmark.
    struct Timings {
        std::chrono::nanoseconds rows{0};     // unpremultiplying and filtering
        std::chrono::nanoseconds deflate{0};  // compressing and framing
    };

    // The PNG file's bytes; nothing for a null image or when compression fails.
    static std::optional<std::vector<std::uint8_t>> encode(const Image& image);
    static std::optional<std::vector<std::uint8_t>> encode(const Image& image,
                                                           const Options& options,
                                                           Timings* timings = nullptr);
};

}  // namespace zd
