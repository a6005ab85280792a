#pragma once
// Image files in and out. Decoding is defensive: a missing, corrupt, truncated or absurdly
// large file gives nothing, never a crash and never unbounded memory.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "model/Image.h"

namespace zd {

class ImageCodec {
  public:
    virtual ~ImageCodec() = default;
    // Reads a picture file (JPEG, PNG, TIFF, WebP, …); nothing if it can't be read.
    virtual std::optional<Image> load(const std::string& path) const = 0;
    // Encodes an image as PNG, without the alpha channel when every pixel is opaque; nothing if
    // encoding failed. Saving calls this from several threads at once.
    virtual std::optional<std::vector<std::uint8_t>> encodePNG(const Image& image) const = 0;
};

}  // namespace zd
