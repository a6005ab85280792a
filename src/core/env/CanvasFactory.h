#pragma once
// Makes the drawing surfaces that composition paints on: bitmaps of a given pixel size,
// initially fully transparent, 8 bits per sample, premultiplied ARGB, no colour profile.

#include <memory>

#include "composition/Canvas.h"

namespace zd {

class CanvasFactory {
  public:
    virtual ~CanvasFactory() = default;
    // A transparent canvas of width × height pixels; nothing (nullptr) when the bitmap can't
    // be made (a size of zero or below, or too large to allocate). Canvas::finish() yields the
    // finished zd::Image.
    virtual std::unique_ptr<Canvas> makeCanvas(int width, int height) const = 0;
};

}  // namespace zd
