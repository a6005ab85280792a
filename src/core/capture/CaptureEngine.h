#pragma once
// Reading the screen: one window by itself (this file) and the stack of chosen windows
// (FullDisplayCapture.h). Pictures come at the density the system captures the window at
// (twice its size in points on macOS, its own pixels on X11), their size counts pixels, and
// each carries that density so the compositor keeps the window's share of the screen.

#include <cstdint>

#include "capture/CaptureError.h"
#include "env/CaptureBackend.h"
#include "model/CaptureTarget.h"
#include "model/Expected.h"
#include "model/Geometry.h"
#include "model/Image.h"
#include "run/Task.h"

namespace zd {

struct Environment;

namespace CaptureEngine {

// The frame's size at `density`, truncated: 800.5 points wide at 2 gives 1601 pixels.
int pixelsFor(double points, double density = 2.0);

// The configuration of a single-window capture: no cursor, no audio, no scaling; the system's
// background and shadow stay.
WindowCaptureConfiguration windowConfiguration(const Rect& frame, double density = 2.0);

// The window `target.id` alone. Fails with `permissionDenied` when the content can't be
// listed, `windowNotFound` when the window isn't listed, or the capture's own failure.
Task<Expected<Image, CaptureFailure>> captureWindow(const Environment& env, CaptureTarget target);

// True when the picture is fully transparent on a 5 × 5 grid of samples (alpha only), or
// has no pixels at all.
bool isCGImageBlank(const Image& image);

}  // namespace CaptureEngine
}  // namespace zd
