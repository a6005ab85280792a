#pragma once
// Test helpers for target control under the headless session: the display's window list in
// the window server's record shape (enough for finding a relaunched window), window titles,
// the brightness of a screen area, and a manual clock that follows real time.

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "env/WindowListBackend.h"
#include "model/Geometry.h"
#include "testing/ManualClock.h"

namespace zd::testing {

struct ProbedWindow {
    std::uint32_t id = 0;
    std::int32_t pid = 0;
    std::string title;
    Rect frame;  // root coordinates
    bool viewable = false;
};

// Managed windows, front to back.
std::vector<ProbedWindow> probeWindows();

// The records a window list gives: layer 0, owner pid and name, number, name, bounds. Option
// bit 1 leaves out windows that aren't viewable.
class ProbeWindowList : public WindowListBackend {
  public:
    Value windowList(WindowListOption option) const override;
};

// Mean luminance (0…255) of a screen area, read from the root window.
std::optional<double> meanLuminance(const Rect& area);

// Advances `clock` with real time, in small steps, until `done` holds or `limit` passed.
bool followRealTime(ManualClock& clock, const std::function<bool()>& done,
                    std::chrono::milliseconds limit);

}  // namespace zd::testing
