#pragma once
// The multiple-windows picture: each chosen window captured by itself and painted at its real
// position, with a shadow of its own, on a transparent canvas of twice the display's size. The
// wallpaper, the panels and every window not chosen stay out. What happened to each window is
// written into a `CaptureRecords` the caller owns, for the run's summary.

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "capture/CaptureError.h"
#include "env/CaptureBackend.h"
#include "model/CompositeEntry.h"
#include "model/Expected.h"
#include "model/Image.h"
#include "model/Value.h"
#include "run/Task.h"

namespace zd {

struct Environment;
class CanvasFactory;

namespace CaptureEngine {

// Which windows go into the stack, back to front, and where (points, top-left origin).
struct FullDisplayLayout {
    ShareableDisplay display;  // the first display: the canvas takes its size
    std::vector<ShareableWindow> windows;
    std::map<std::uint32_t, Rect> frames;
};

// What became of one window of a layout.
struct CaptureOutcome {
    std::string label;
    Rect frame;
    bool included = false;  // in the picture
    bool blank = false;     // came back fully transparent
    friend bool operator==(const CaptureOutcome&, const CaptureOutcome&) = default;
};

struct EnabledRow {
    std::uint32_t id = 0;
    std::string label;
    friend bool operator==(const EnabledRow&, const EnabledRow&) = default;
};

// The memory of the last layout built and the last stack painted. Each field is replaced as a
// whole at the end of the operation that writes it.
struct CaptureRecords {
    std::vector<std::string> lastSkippedWindowNames;  // application names left out
    std::vector<CaptureOutcome> lastCaptureOutcomes;  // one per window tried, back to front
    std::vector<EnabledRow> lastEnabledSnapshot;      // the ticked rows at layout time
    std::vector<std::string> lastMissingFromLayout;   // labels of ticked rows without window
};

// "Pad — Notes", or "Pad" when the title is empty.
std::string label(const std::string& applicationName, const std::string& title);
// The owner's name, else the title, else "window".
std::string applicationName(const ShareableWindow& window);
std::string label(const ShareableWindow& window);

// The configuration of one window of the stack: transparent background, no system shadow.
WindowCaptureConfiguration stackConfiguration(const Rect& frame, double density = 2.0);

// Pure halves, for the operations below.
Expected<FullDisplayLayout, CaptureFailure> layoutFromSnapshot(const ShareableContent& content,
                                                               const Value& windowList,
                                                               std::int32_t ownPid);
Expected<FullDisplayLayout, CaptureFailure> layoutFromRows(
    const ShareableContent& content, const std::vector<CompositeEntry>& compositeWindows,
    CaptureRecords& records);

// Everything on the desktop of other applications, in the window server's order.
Task<Expected<FullDisplayLayout, CaptureFailure>> snapshotFullDisplayLayout(const Environment& env);
// The ticked rows of the multiple-windows list (top row front-most), found again by id or by
// application and title. Writes lastEnabledSnapshot and lastMissingFromLayout.
Task<Expected<FullDisplayLayout, CaptureFailure>> buildLayoutFromCompositeWindows(
    const Environment& env, std::vector<CompositeEntry> compositeWindows, CaptureRecords& records);

// One picture of a window of the stack, and the frame it is painted at.
struct StackedWindow {
    Image image;
    Rect frame;
};
// Paints the pictures in order on a transparent canvas of the display's size at its density
// (2W × 2H at density 2); the picture carries that density.
Image paintStack(const CanvasFactory& canvases, const ShareableDisplay& display,
                 const std::vector<StackedWindow>& stack);

// Captures the layout's windows one after the other (a snapshot when there is no layout) and
// paints them. A window that fails or comes back blank is left out and noted in `records`;
// only the snapshot's failures are raised.
Task<Expected<Image, CaptureFailure>> captureFullDisplay(const Environment& env,
                                                         std::optional<FullDisplayLayout> layout,
                                                         CaptureRecords& records);

}  // namespace CaptureEngine
}  // namespace zd
