#pragma once
// Plain geometry values. Composition works in canvas pixels with the origin at the lower left
// and y upward; window-server frames are in points with the origin at the top left, y downward.

#include <algorithm>

namespace zd {

struct Point {
    double x = 0;
    double y = 0;
    friend bool operator==(const Point&, const Point&) = default;
};

struct Size {
    double width = 0;
    double height = 0;
    friend bool operator==(const Size&, const Size&) = default;
};

struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    double minX() const { return x; }
    double minY() const { return y; }
    double maxX() const { return x + width; }
    double maxY() const { return y + height; }
    double midX() const { return x + width / 2; }
    double midY() const { return y + height / 2; }
    Size size() const { return {width, height}; }
    bool isEmpty() const { return width <= 0 || height <= 0; }
    Rect intersection(const Rect& o) const {
        const double x0 = std::max(x, o.x);
        const double y0 = std::max(y, o.y);
        const double x1 = std::min(maxX(), o.maxX());
        const double y1 = std::min(maxY(), o.maxY());
        if (x1 <= x0 || y1 <= y0) return {};
        return {x0, y0, x1 - x0, y1 - y0};
    }
    friend bool operator==(const Rect&, const Rect&) = default;
};

}  // namespace zd
