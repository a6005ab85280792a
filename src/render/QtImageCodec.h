#pragma once
// Picture files through Qt's image plugins (JPEG, PNG, TIFF, WebP, …), read defensively:
// the header's size is checked before any pixel is decoded, so a corrupt, truncated or
// absurdly large file (a decompression bomb) gives nothing instead of a crash or a huge
// allocation. PNGs are written by our own PngWriter.
//
// The last two pictures read stay in memory, keyed by path, size and modification time: a
// run composes every shot over the same one or two backgrounds, and a changed file is
// still read anew. Safe to use from several threads.

#include <filesystem>
#include <list>
#include <mutex>

#include "env/ImageCodec.h"

namespace zd {

class QtImageCodec final : public ImageCodec {
  public:
    // Pictures above this many pixels are refused (a 100-megapixel photo still loads).
    static constexpr long long kMaxPixels = 120'000'000;
    static constexpr int kMaxSide = 32'768;
    static constexpr std::size_t kCachedPictures = 2;

    std::optional<Image> load(const std::string& path) const override;
    std::optional<std::vector<std::uint8_t>> encodePNG(const Image& image) const override;

  private:
    struct CacheEntry {
        std::string path;
        std::uintmax_t size = 0;
        std::filesystem::file_time_type modified;
        Image image;
    };
    static std::optional<Image> decode(const std::string& path);

    mutable std::mutex mutex_;
    mutable std::list<CacheEntry> cache_;  // most recently used first
};

}  // namespace zd
