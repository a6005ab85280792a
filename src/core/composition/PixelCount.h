#pragma once
// A canvas dimension as a whole pixel count, for sizes computed in floating point, and the
// canvas of such a size.

#include <cmath>
#include <limits>
#include <memory>
#include <optional>

#include "composition/Canvas.h"
#include "env/CanvasFactory.h"
#include "model/Geometry.h"

namespace zd {

// The length truncated to whole pixels; nothing when it can't size a bitmap (not finite,
// below one pixel, or beyond what an int counts).
inline std::optional<int> pixelCount(double length) {
    if (!std::isfinite(length))
        return std::nullopt;
    const double truncated = std::trunc(length);
    if (truncated < 1 || truncated > std::numeric_limits<int>::max())
        return std::nullopt;
    return static_cast<int>(truncated);
}

// A canvas `size` wide and high in whole pixels; nothing when either side can't size a bitmap
// or the factory can't make one.
inline std::unique_ptr<Canvas> makeCanvasOfSize(const CanvasFactory& canvases, Size size) {
    const std::optional<int> wide = pixelCount(size.width);
    const std::optional<int> high = pixelCount(size.height);
    return (wide && high) ? canvases.makeCanvas(*wide, *high) : nullptr;
}

}  // namespace zd
