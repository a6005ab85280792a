#pragma once
// Test helpers that look at the headless session's display: the managed windows with their
// titles (read apart from the product's window lists), a process's first window, the active
// window's process, atoms, the screen's own pixels; and the measures tests take of pictures.

#include <cstdint>
#include <string>
#include <vector>

#include "model/Geometry.h"
#include "model/Image.h"

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

// The process's first ordinary window wider than 100 pixels, as the product's client list
// shows it, once it is mapped (up to 20 seconds); 0 when none came.
std::uint32_t firstWindowOf(std::int32_t pid);

// The process that owns the active window; 0 when none does.
std::int32_t activeWindowPid();

// The atom of `name`, made if the display has none yet.
std::uint32_t atom(const std::string& name);

// The screen's own pixels of a rectangle of the root window, opaque; a null image when the
// display can't give them.
Image rootPixels(const Rect& area);

// Mean luminance (0…255) of a picture's pixels; -1 for a null picture.
double meanLuminance(const Image& image);

// Share of pixels of which a colour channel (red, green or blue) differs by more than
// `tolerance`; 1 when the sizes differ.
double differingShare(const Image& a, const Image& b, int tolerance);

}  // namespace zd::testing
