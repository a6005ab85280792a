#pragma once
// Makes QtCanvas surfaces: premultiplied ARGB bitmaps, initially transparent. Needs a
// QGuiApplication (for fonts) before the first canvas draws text.

#include "env/CanvasFactory.h"

namespace zd {

class QtCanvasFactory final : public CanvasFactory {
  public:
    // Larger bitmaps are refused: QPainter can't address them, and no canvas is that big.
    static constexpr int kMaxSide = 32'767;
    static constexpr long long kMaxPixels = 16384LL * 16384LL;

    std::unique_ptr<Canvas> makeCanvas(int width, int height) const override;
};

}  // namespace zd
