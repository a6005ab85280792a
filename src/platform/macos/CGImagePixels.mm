#include "macos/CGImagePixels.h"

#include <vector>

#include "macos/PixelConversion.h"

namespace zd::mac {

namespace {
// B, G, R, A bytes: premultiplied alpha first in 32-bit little-endian words.
constexpr CGBitmapInfo bgraPremultiplied =
    static_cast<CGBitmapInfo>(kCGImageAlphaPremultipliedFirst) | kCGBitmapByteOrder32Little;
}  // namespace

std::optional<Image> imageOf(CGImageRef image) {
    if (image == nullptr)
        return std::nullopt;
    const std::size_t width = CGImageGetWidth(image);
    const std::size_t height = CGImageGetHeight(image);
    if (width == 0 || height == 0)
        return Image();
    std::vector<std::uint8_t> bytes(width * height * 4, 0);
    CGColorSpaceRef space = CGColorSpaceCreateDeviceRGB();
    CGContextRef context =
        CGBitmapContextCreate(bytes.data(), width, height, 8, width * 4, space, bgraPremultiplied);
    CGColorSpaceRelease(space);
    if (context == nullptr)
        return std::nullopt;
    CGContextDrawImage(context,
                       CGRectMake(0, 0, static_cast<CGFloat>(width), static_cast<CGFloat>(height)),
                       image);
    CGContextRelease(context);
    return imageFromBGRA(bytes, static_cast<int>(width), static_cast<int>(height), width * 4);
}

CGImageRef createCGImage(const Image& image) {
    if (image.isNull())
        return nullptr;
    std::vector<std::uint8_t> bytes = bgraFromImage(image);
    CFDataRef data = CFDataCreate(nullptr, bytes.data(), static_cast<CFIndex>(bytes.size()));
    if (data == nullptr)
        return nullptr;
    CGDataProviderRef provider = CGDataProviderCreateWithCFData(data);
    CFRelease(data);
    if (provider == nullptr)
        return nullptr;
    CGColorSpaceRef space = CGColorSpaceCreateDeviceRGB();
    const auto width = static_cast<std::size_t>(image.width());
    CGImageRef result =
        CGImageCreate(width, static_cast<std::size_t>(image.height()), 8, 32, width * 4, space,
                      bgraPremultiplied, provider, nullptr, false, kCGRenderingIntentDefault);
    CGColorSpaceRelease(space);
    CGDataProviderRelease(provider);
    return result;
}

}  // namespace zd::mac
