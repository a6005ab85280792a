#pragma once
// Turns one captured (or placeholder) image into the final picture: a bitmap of exactly the
// output canvas's pixel size holding the background, the window or display image with its
// shadow, and the menu bar (drawn, or the real captured strip). Preview tiles and saved files
// go through the same operation, so what the user sees is what is written.

#include <filesystem>
#include <optional>
#include <span>
#include <vector>

#include "composition/OutputError.h"
#include "env/ScreenBackend.h"
#include "model/AppearanceMode.h"
#include "model/BackgroundChoice.h"
#include "model/Expected.h"
#include "model/Geometry.h"
#include "model/Image.h"
#include "model/MenuBarConfig.h"
#include "model/Value.h"

namespace zd {

class CanvasFactory;
class ImageCodec;
class WindowListBackend;
struct Environment;

namespace Compositor {

// The argument record of render; render only reads it.
struct Inputs {
    Image windowImage;  // pixels of the screen's backing store, at the density it carries
    Size canvas;        // output size in pixels
    BackgroundChoice background;
    AppearanceMode mode = AppearanceMode::light;
    MenuBarConfig menuBar;
    bool applyShadow = true;  // single-window captures only
    bool isFullDisplayCapture = false;
    std::optional<Image> capturedMenuBar;  // a real strip of the target's menu bar
    // Where the real status items start on the captured strip, as a fraction of its width
    // (MenuBarOCR.lastStatusItemsLeftFraction, the run's shared value; 1.0 when none were found).
    double statusItemsLeftFraction = 1.0;
};

// What render reads of the platform.
struct Platform {
    const CanvasFactory& canvases;
    const ImageCodec& codec;  // loads the background picture
    std::optional<ScreenInfo> mainScreen;
    double realMenuBarHeightPts = 24;  // see realMenuBarHeightPts()
};

// Where the image goes on the canvas, and how high the bar is.
struct Layout {
    double barHeight = 0;        // B
    double availableHeight = 0;  // A: the height the image may use, from the bottom edge
    Rect source;                 // in the image's pixels, y = 0 at its bottom row
    Rect destination;            // in canvas pixels
};

// Draws the canvas. Never fails: a canvas that can't be made (size not finite, not positive or
// too large) gives an empty image, which writePNG then refuses.
Image render(const Inputs& inputs, const Platform& platform);

// What render reads, asked of the environment now: the main screen and the live menu bar's
// height. Nothing without a canvas factory or an image codec in the environment.
std::optional<Platform> platformOf(const Environment& env);

// The same, with the platform asked of the environment on each call; an empty image when it
// can't be had.
Image render(const Inputs& inputs, const Environment& env);

// The placement of the image for the inputs, as render draws it.
Layout layout(const Inputs& inputs, const std::optional<ScreenInfo>& mainScreen,
              double realMenuBarHeightPts);

// Encodes as PNG and writes to `path`, creating missing parent folders. Fails with
// "Could not encode PNG" (domain "Zephyrdock", code 1), or with the file system's error.
// The two halves of writePNG: encoding (pure, safe on any thread) and writing the bytes.
Expected<std::vector<std::uint8_t>, OutputError> encodePNG(const Image& image,
                                                           const ImageCodec& codec);
Expected<void, OutputError> writeEncodedPNG(const std::vector<std::uint8_t>& data,
                                            const std::filesystem::path& path);
Expected<void, OutputError> writePNG(const Image& image, const std::filesystem::path& path,
                                     const ImageCodec& codec);

// Height in points of the live menu bar: the "Height" of the first on-screen window whose
// kCGWindowLayer is the integer 24 and whose kCGWindowBounds is a dictionary of numbers with a
// "Height" above 0; 24.0 when there's no list or no such window.
double realMenuBarHeightPts(const std::optional<std::span<const Value>>& onScreenWindows);
// The same over the window server's list of on-screen windows.
double realMenuBarHeightPts(const WindowListBackend& windowList);

// The parts of `self` that `other` doesn't cover, as up to four non-overlapping rectangles:
// bottom band, top band (full width), then left and right bands limited to the overlap.
std::vector<Rect> subtracting(const Rect& self, const Rect& other);

}  // namespace Compositor
}  // namespace zd
