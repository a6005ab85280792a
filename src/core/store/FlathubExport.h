#pragma once
// The pictures Flathub asks for: the window alone, with its decorations and a shadow baked in,
// on a transparent background, no menu bar, the window no larger than 1000 × 700 logical
// pixels. The canvas follows the window: the window at its captured size (shrunk only when it
// is over the limit) with room around it for the shadow.

#include <optional>

#include "model/Geometry.h"
#include "model/Image.h"

namespace zd {

class CanvasFactory;

namespace FlathubExport {

// The window's largest size, in logical pixels (points).
inline constexpr Size logicalWindowLimit{1000, 700};

// The factor a window of `window` pixels at `scale` pixels per point is drawn at: 1, or less
// for a window beyond the limit.
double windowFactor(Size window, double scale);

// Room on every side of the window for its shadow, in pixels at `scale`.
double shadowMargin(double scale);

// The picture's size for a window of `window` pixels: the (shrunk) window plus the margins,
// whole pixels.
Size canvas(Size window, double scale);

// A planned window of `window` pixels at `scale` within the limit, each side capped on its
// own as the run sizes the window.
Size withinLimit(Size window, double scale);

// Draws the picture of `window` on a transparent canvas of `canvas` pixels: the whole export
// scaled down (never up) to fit, centred. An empty image when the canvas can't be made.
Image render(const Image& window, Size canvas, double scale, const CanvasFactory& canvases);

}  // namespace FlathubExport
}  // namespace zd
