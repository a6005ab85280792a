#pragma once
// Whether the target followed the switch between Light and Dark: the two captures of one
// window are compared, so that a window that stayed as it was is reported instead of being
// saved as a wrong picture without a word.

#include "model/Image.h"

namespace zd::AppearanceFollow {

// Pixels further apart than this in any channel count as changed.
inline constexpr int channelTolerance = 24;
// Two captures whose changed pixels stay under this share of the picture show the same
// window: a blinking caret or a ticking clock changes a few, a theme almost all.
inline constexpr double changedShareLimit = 0.01;

// True when both captures have one size and fewer than changedShareLimit of their pixels
// changed. Captures of different sizes are not the same picture.
bool looksSame(const Image& light, const Image& dark);

}  // namespace zd::AppearanceFollow
