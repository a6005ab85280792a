#pragma once
// Turns rows of a premultiplied ARGB image into PNG scanlines: straight (unpremultiplied)
// R, G, B, A bytes, or R, G, B only for a picture without an alpha channel, behind one filter
// type byte.

#include <cstdint>

#include "model/Image.h"

namespace zd {

class PngRowFilter {
  public:
    enum class Type { none = 0, sub = 1, up = 2, average = 3, paeth = 4 };  // PNG's numbers
    // Samples per pixel: PNG colour types 2 (RGB) and 6 (RGBA).
    enum class Channels { rgb = 3, rgba = 4 };

    // Bytes in one scanline of an image `width` pixels wide, filter type byte included.
    static std::size_t scanlineBytes(int width, Channels channels = Channels::rgba) {
        return static_cast<std::size_t>(width) * static_cast<std::size_t>(channels) + 1;
    }

    // Writes the scanlines of rows [first, last) to `out`, one after the other. With `rgb` the
    // alpha is dropped, which is only right for opaque pixels: the conversion notes on the way
    // whether every pixel was, and returns false (the output then incomplete) at the first row
    // that holds one that isn't. With `rgba` it always returns true.
    static bool filterRows(const Image& image, Type type, int first, int last, std::uint8_t* out,
                           Channels channels = Channels::rgba);
};

}  // namespace zd
