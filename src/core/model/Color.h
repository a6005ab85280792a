#pragma once
// A colour value in sRGB with straight (not premultiplied) alpha, components 0…1.

namespace zd {

struct Color {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;

    static constexpr Color white(double level, double alpha = 1.0) {
        return {level, level, level, alpha};
    }
    static constexpr Color black(double alpha = 1.0) { return {0, 0, 0, alpha}; }
    static constexpr Color clear() { return {0, 0, 0, 0}; }

    friend bool operator==(const Color&, const Color&) = default;
};

}  // namespace zd
