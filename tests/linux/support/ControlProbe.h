#pragma once
// Test helpers for target control under the headless session: the managed windows as the
// platform's own EWMH reading gives them, the brightness of a screen area, and a manual clock
// that follows real time.

#include <chrono>
#include <functional>
#include <optional>
#include <vector>

#include "linux/EwmhClients.h"
#include "model/Geometry.h"
#include "testing/ManualClock.h"

namespace zd::testing {

// Managed windows, front to back; none without a display.
std::vector<x11::ClientWindow> probeWindows();

// Mean luminance (0…255) of a screen area, read from the root window.
std::optional<double> meanLuminance(const Rect& area);

// Advances `clock` with real time, in small steps, until `done` holds or `limit` passed.
bool followRealTime(ManualClock& clock, const std::function<bool()>& done,
                    std::chrono::milliseconds limit);

}  // namespace zd::testing
