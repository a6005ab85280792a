#pragma once
// The blur under a drop shadow: three box blurs in each direction, which together come
// within a few percent of a Gaussian, in time that doesn't depend on the radius. Works on an
// 8-bit coverage mask in place; the two halves of the mask are blurred on two threads.

#include <cstddef>
#include <cstdint>

namespace zd {

class ShadowBlur {
  public:
    // The Gaussian's sigma for a shadow's blur radius (the radius is about two sigma, as
    // the platform's shadows count it).
    static double sigmaForRadius(double blurRadius) { return blurRadius / 2.0; }

    // How far the blur spreads coverage beyond a shape's edge, in pixels: a mask needs this
    // much empty margin on every side so that nothing is cut off.
    static int spread(double sigma);

    // Blurs `mask` (width × height bytes, rows `stride` bytes apart) in place.
    static void blur(std::uint8_t* mask, int width, int height, std::size_t stride, double sigma,
                     int threads = 2);
};

}  // namespace zd
