#pragma once
// Pixels between the window server's bitmaps and zd::Image. A bitmap context made with
// premultiplied-first alpha in 32-bit little-endian words holds each pixel as the bytes
// B, G, R, A; zd::Image holds 0xAARRGGBB words. Rows of a bitmap may be padded beyond
// width × 4 bytes.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "model/Image.h"

namespace zd::mac {

// The picture held in `bytes` (B, G, R, A per pixel, premultiplied, `bytesPerRow` per row).
// None when the sizes don't fit the buffer.
std::optional<Image> imageFromBGRA(std::span<const std::uint8_t> bytes, int width, int height,
                                   std::size_t bytesPerRow);

// The picture's pixels as B, G, R, A bytes, premultiplied, rows of width × 4 bytes, for a
// bitmap that the system reads back (text recognition, icons).
std::vector<std::uint8_t> bgraFromImage(const Image& image);

}  // namespace zd::mac
