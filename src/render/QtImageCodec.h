#pragma once
// Picture files through Qt's image plugins (JPEG, PNG, TIFF, WebP, …), read defensively:
// the header's size is checked before any pixel is decoded, so a corrupt, truncated or
// absurdly large file (a decompression bomb) gives nothing instead of a crash or a huge
// allocation. PNGs are written by our own PngWriter.

#include "env/ImageCodec.h"

namespace zd {

class QtImageCodec final : public ImageCodec {
  public:
    // Pictures above this many pixels are refused (a 100-megapixel photo still loads).
    static constexpr long long kMaxPixels = 120'000'000;
    static constexpr int kMaxSide = 32'768;

    std::optional<Image> load(const std::string& path) const override;
    std::optional<std::vector<std::uint8_t>> encodePNG(const Image& image) const override;
};

}  // namespace zd
