#pragma once
// An image codec for tests: pictures "on disk" are entries of a map, and PNG encoding yields a
// small deterministic byte string (or fails when told to).

#include <map>
#include <string>
#include <vector>

#include "env/ImageCodec.h"

namespace zd {

class FakeImageCodec : public ImageCodec {
  public:
    std::map<std::string, Image> files;  // path → picture that load() gives
    bool failEncoding = false;

    std::optional<Image> load(const std::string& path) const override {
        auto found = files.find(path);
        if (found == files.end())
            return std::nullopt;
        return found->second;
    }

    // "PNG w h" as bytes, so tests can tell which picture went to which file. Saving encodes
    // on several threads at once: this only reads.
    std::optional<std::vector<std::uint8_t>> encodePNG(const Image& image) const override {
        if (failEncoding)
            return std::nullopt;
        const std::string text =
            "PNG " + std::to_string(image.width()) + " " + std::to_string(image.height());
        return std::vector<std::uint8_t>(text.begin(), text.end());
    }
};

}  // namespace zd
