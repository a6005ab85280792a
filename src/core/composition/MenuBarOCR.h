#pragma once
// Looks at the live system menu bar, which shows the menus of the frontmost application: one
// operation captures the bar with its status items put back in, to serve as the canvas's
// menu bar; the other reads such a picture with text recognition to learn the target's menu
// titles in the language it runs in. Where the platform has no menu bar window (Linux), the
// capture gives nothing and the run goes on without one.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "capture/WindowRecord.h"
#include "env/Environment.h"
#include "env/TextRecognitionBackend.h"
#include "model/Geometry.h"
#include "model/Image.h"
#include "run/Task.h"

namespace zd::MenuBarOCR {

// One recognised piece of text; `x` is the left edge of its box as a fraction of the
// picture's width, 0 at the left, 1 at the right.
struct Item {
    std::string text;
    double x = 0;
    friend bool operator==(const Item&, const Item&) = default;
};

// The window levels of the menu bar and of the status items, which are windows of their own.
inline constexpr int menuBarWindowLevel = WindowRecord::menuBarLayer;
inline constexpr int statusItemWindowLevel = WindowRecord::statusItemLayer;
// Pixels per point of the captured bar, whatever the display's own scale.
inline constexpr double captureScale = 2.0;
// Text boxes starting at or right of this fraction of the width are status text, not titles.
inline constexpr double titleRegionEnd = 0.55;

// A captured bar, and where its leftmost status item starts as a fraction of the bar's width
// (1.0 when there are none). The caller keeps the fraction for composition.
struct MenuBarCapture {
    Image image;
    double statusItemsLeftFraction = 1.0;
};

// Captures the bar (and its status items) at twice its size in points; nothing when the
// platform has no menu bar window or a capture fails. Blocking work runs on env's workers.
Task<std::optional<MenuBarCapture>> captureMenuBarImage(Environment env);

// The menu titles read from a picture of the bar, in order from the left, without the
// application's own name. Empty when nothing is found or recognition fails.
Task<std::vector<std::string>> ocr(Environment env, Image cgImage, std::string appName);

// -- Rules, exposed for tests. --

// Where the leftmost status window starts within the bar, clamped to 0…1; 1.0 with no status
// windows or a bar of no width.
double statusItemsLeftFraction(const Rect& bar, const std::vector<Rect>& statusFrames);

// Items from the recogniser's observations: the best candidate of each and the left edge of
// its box. Observations without a candidate are skipped.
std::vector<Item> itemsFrom(const std::vector<TextObservation>& observations);

// The titles among `items`: left of titleRegionEnd, ordered by x (stable), trimmed, not empty,
// and not containing (case-insensitively) the trimmed application name.
std::vector<std::string> titlesFrom(std::vector<Item> items, std::string_view appName);

}  // namespace zd::MenuBarOCR
