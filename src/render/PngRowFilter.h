#pragma once
// Turns rows of a premultiplied ARGB image into PNG scanlines: straight (unpremultiplied)
// R, G, B, A bytes behind one filter type byte.

#include <cstdint>

#include "model/Image.h"

namespace zd {

class PngRowFilter {
  public:
    enum class Type { none = 0, sub = 1, up = 2, average = 3, paeth = 4 };  // PNG's numbers

    // Bytes in one scanline of an image `width` pixels wide, filter type byte included.
    static std::size_t scanlineBytes(int width) { return static_cast<std::size_t>(width) * 4 + 1; }

    // Writes the scanlines of rows [first, last) to `out`, one after the other.
    static void filterRows(const Image& image, Type type, int first, int last, std::uint8_t* out);
};

}  // namespace zd
