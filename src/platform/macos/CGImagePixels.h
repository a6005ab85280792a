#pragma once
// A CGImage drawn into a premultiplied bitmap and read as zd::Image, and back. Only for
// Objective-C++ files.

#import <CoreGraphics/CoreGraphics.h>

#include <optional>

#include "model/Image.h"

namespace zd::mac {

// None when no bitmap could be made for it.
std::optional<Image> imageOf(CGImageRef image);
// A new image the caller releases; null for an empty picture.
CGImageRef createCGImage(const Image& image) CF_RETURNS_RETAINED;

}  // namespace zd::mac
