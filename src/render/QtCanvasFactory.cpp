#include "QtCanvasFactory.h"

#include "QtCanvas.h"

namespace zd {

std::unique_ptr<Canvas> QtCanvasFactory::makeCanvas(int width, int height) const {
    if (width <= 0 || height <= 0 || width > kMaxSide || height > kMaxSide ||
        static_cast<long long>(width) * height > kMaxPixels)
        return nullptr;
    auto canvas = std::make_unique<QtCanvas>(width, height);
    if (!canvas->isValid())
        return nullptr;
    return canvas;
}

}  // namespace zd
