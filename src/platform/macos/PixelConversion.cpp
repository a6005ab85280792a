#include "macos/PixelConversion.h"

namespace zd::mac {

std::optional<Image> imageFromBGRA(std::span<const std::uint8_t> bytes, int width, int height,
                                   std::size_t bytesPerRow) {
    if (width <= 0 || height <= 0)
        return std::nullopt;
    const auto w = static_cast<std::size_t>(width);
    const auto h = static_cast<std::size_t>(height);
    if (bytesPerRow < w * 4 || bytes.size() < bytesPerRow * (h - 1) + w * 4)
        return std::nullopt;
    std::vector<std::uint32_t> pixels(w * h);
    for (std::size_t y = 0; y < h; ++y) {
        const std::uint8_t* row = bytes.data() + y * bytesPerRow;
        for (std::size_t x = 0; x < w; ++x) {
            const std::uint8_t* p = row + x * 4;
            pixels[y * w + x] = Image::argb(p[3], p[2], p[1], p[0]);
        }
    }
    return Image(width, height, std::move(pixels));
}

std::vector<std::uint8_t> bgraFromImage(const Image& image) {
    std::vector<std::uint8_t> bytes;
    if (image.isNull())
        return bytes;
    bytes.reserve(image.pixels().size() * 4);
    for (std::uint32_t argb : image.pixels()) {
        bytes.push_back(static_cast<std::uint8_t>(Image::blueOf(argb)));
        bytes.push_back(static_cast<std::uint8_t>(Image::greenOf(argb)));
        bytes.push_back(static_cast<std::uint8_t>(Image::redOf(argb)));
        bytes.push_back(static_cast<std::uint8_t>(Image::alphaOf(argb)));
    }
    return bytes;
}

}  // namespace zd::mac
