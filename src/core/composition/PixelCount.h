#pragma once
// A canvas dimension as a whole pixel count, for sizes computed in floating point.

#include <cmath>
#include <limits>
#include <optional>

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

}  // namespace zd
