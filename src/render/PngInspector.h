#pragma once
// Reads a PNG file the way a store's upload check does: its header (size, bit depth, colour
// type, interlacing), whether it carries alpha (an alpha channel or a tRNS chunk), and, by
// decoding every pixel, whether any pixel is in fact not opaque and where the opaque ones lie.
// Every colour type, bit depth and Adam7 interlacing are understood. Defensive: a damaged,
// truncated or absurdly large file gives the reason, never a crash.

#include <cstdint>
#include <span>
#include <string>

#include "model/Expected.h"

namespace zd {

class PngInspector {
  public:
    static constexpr long long kMaxPixels = 120'000'000;

    struct Facts {
        int width = 0;
        int height = 0;
        int bitDepth = 0;
        int colourType = 0;  // 0 grey, 2 RGB, 3 palette, 4 grey + alpha, 6 RGBA
        bool interlaced = false;
        bool alphaChannel = false;       // colour type 4 or 6, or a tRNS chunk
        bool transparentPixels = false;  // some pixel has alpha below the maximum
        int opaqueWidth = 0;             // the box around the fully opaque pixels
        int opaqueHeight = 0;
    };

    // The facts of a whole PNG file's bytes, or why they aren't a readable PNG.
    static Expected<Facts, std::string> inspect(std::span<const std::uint8_t> file);
};

}  // namespace zd
