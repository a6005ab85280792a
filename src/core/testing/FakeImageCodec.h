#pragma once
// An image codec for tests: pictures "on disk" are entries of a map, and PNG encoding yields a
// small deterministic byte string (or fails when told to). Records the images it encoded.

#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "env/ImageCodec.h"

namespace zd {

class FakeImageCodec : public ImageCodec {
  public:
    std::map<std::string, Image> files;  // path → picture that load() gives
    bool failEncoding = false;

    std::optional<Image> load(const std::string& path) const override {
        loadedPaths.push_back(path);
        auto found = files.find(path);
        if (found == files.end())
            return std::nullopt;
        return found->second;
    }

    // "PNG w h" as bytes, so tests can tell which picture went to which file.
    std::optional<std::vector<std::uint8_t>> encodePNG(const Image& image) const override {
        {
            // Saving encodes on several threads at once.
            std::lock_guard lock(mutex_);
            encoded.push_back(image);
        }
        if (failEncoding)
            return std::nullopt;
        const std::string text =
            "PNG " + std::to_string(image.width()) + " " + std::to_string(image.height());
        return std::vector<std::uint8_t>(text.begin(), text.end());
    }

    mutable std::vector<std::string> loadedPaths;
    mutable std::vector<Image> encoded;

  private:
    mutable std::mutex mutex_;
};

}  // namespace zd
