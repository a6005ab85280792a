#pragma once
// A bitmap whose size counts pixels: 8-bit premultiplied ARGB, one 32-bit word per pixel
// (0xAARRGGBB in native byte order, the layout of QImage::Format_ARGB32_Premultiplied).
// The pixel store is shared between copies and copied on first write, so images pass
// through the run by value as cheaply as the platform's reference-counted images do.

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace zd {

class Image {
  public:
    Image() = default;
    Image(int width, int height)
        : width_(width > 0 ? width : 0),
          height_(height > 0 ? height : 0),
          pixels_(std::make_shared<std::vector<std::uint32_t>>(
              static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_), 0u)) {}
    Image(int width, int height, std::vector<std::uint32_t> pixels)
        : width_(width),
          height_(height),
          pixels_(std::make_shared<std::vector<std::uint32_t>>(std::move(pixels))) {}

    int width() const { return width_; }
    int height() const { return height_; }
    bool isNull() const { return width_ <= 0 || height_ <= 0 || !pixels_; }

    std::span<const std::uint32_t> pixels() const {
        return pixels_ ? std::span<const std::uint32_t>(*pixels_)
                       : std::span<const std::uint32_t>();
    }
    // Detaches from other copies before handing out writable pixels.
    std::span<std::uint32_t> mutablePixels() {
        if (!pixels_)
            return {};
        if (pixels_.use_count() > 1)
            pixels_ = std::make_shared<std::vector<std::uint32_t>>(*pixels_);
        return *pixels_;
    }
    std::uint32_t pixel(int x, int y) const {
        return (*pixels_)[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
                          static_cast<std::size_t>(x)];
    }
    void setPixel(int x, int y, std::uint32_t argb) {
        mutablePixels()[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
                        static_cast<std::size_t>(x)] = argb;
    }
    // Identity of the pixel store: two images that share it are the same picture.
    const void* storageId() const { return pixels_.get(); }

    // How many of the picture's pixels stand for one point of the screen it shows: a capture
    // carries the density it was taken at. 0 where nobody said (a decoded file); whoever draws
    // it then assumes the screen's own.
    double pixelsPerPoint() const { return pixelsPerPoint_; }
    void setPixelsPerPoint(double density) { pixelsPerPoint_ = density > 0 ? density : 0; }

    static constexpr std::uint32_t alphaOf(std::uint32_t argb) { return argb >> 24; }
    static constexpr std::uint32_t redOf(std::uint32_t argb) { return (argb >> 16) & 0xffu; }
    static constexpr std::uint32_t greenOf(std::uint32_t argb) { return (argb >> 8) & 0xffu; }
    static constexpr std::uint32_t blueOf(std::uint32_t argb) { return argb & 0xffu; }
    static constexpr std::uint32_t argb(std::uint32_t a, std::uint32_t r, std::uint32_t g,
                                        std::uint32_t b) {
        return (a << 24) | (r << 16) | (g << 8) | b;
    }

  private:
    int width_ = 0;
    int height_ = 0;
    std::shared_ptr<std::vector<std::uint32_t>> pixels_;
    double pixelsPerPoint_ = 0;
};

}  // namespace zd
