#pragma once
// The benchmark's fixed settings: a 1440 × 900-point screen at scale 2, the mas2880 canvas,
// shadow on, an image background and the synthetic bar with the default titles.

#include <string>

#include "composition/Compositor.h"

namespace zd::bench {

ScreenInfo benchScreen();

// Inputs for one composition of `window` in `mode` over the picture at `backgroundPath`.
Compositor::Inputs benchInputs(const Image& window, AppearanceMode mode, Size canvas,
                               const std::string& backgroundPath);

// Peak resident memory of this process so far, in MiB.
double peakMemoryMiB();

}  // namespace zd::bench
