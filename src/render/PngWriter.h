#pragma once
// Our own PNG encoder: premultiplied ARGB in, an 8-bit PNG out: RGB when every pixel is opaque,
// RGBA (straight alpha) otherwise.
// Saving pictures is dominated by compression, so the filter and the deflate level are
// chosen by measurement (see bench/): the Average filter and libdeflate's fastest level, run
// on several threads, are many times faster than libpng's defaults for a few percent more
// bytes on screenshots.

#include <chrono>
#include <cstdint>
#include <optional>
#include <vector>

#include "PngRowFilter.h"
#include "model/Image.h"

namespace zd {

class PngWriter {
  public:
    using Filter = PngRowFilter::Type;

    struct Options {
        Filter filter = Filter::average;
        // libdeflate level, 0…12. The fastest level, 1, converts and compresses rows on all
        // the threads; the others compress one stream on one thread (for comparing levels).
        int compressionLevel = 1;
        int threads = 2;
    };

    // Where the time went, for the benchmark: thread time summed over the threads.
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
