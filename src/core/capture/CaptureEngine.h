#pragma once
// Reading the screen: one window by itself (this file) and the stack of chosen windows
// (FullDisplayCapture.h). Pictures come at twice the window's size in points, whatever the
// display's own scale, and their size counts pixels.

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

// Twice the frame's size, truncated: 800.5 points wide gives 1601 pixels.
int pixelsFor(double points);

// The configuration of a single-window capture: no cursor, no audio, no scaling; the system's
// background and shadow stay.
WindowCaptureConfiguration windowConfiguration(const Rect& frame);

// The window `target.id` alone. Fails with `permissionDenied` when the content can't be
// listed, `windowNotFound` when the window isn't listed, or the capture's own failure.
Task<Expected<Image, CaptureFailure>> captureWindow(const Environment& env, CaptureTarget target);

// True when the picture is fully transparent on a 5 × 5 grid of samples (alpha only), or
// has no pixels at all.
bool isCGImageBlank(const Image& image);

}  // namespace CaptureEngine
}  // namespace zd
