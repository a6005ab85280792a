#pragma once
// The one bridge between the run's settings and the compositor: composes one planned output,
// from a real capture when there is one, otherwise from a placeholder. Preview tiles and saved
// files both come through here. The state owner forwards its renderTile to this function with
// a snapshot of the settings it reads.

#include <optional>
#include <string>
#include <vector>

#include "composition/Compositor.h"
#include "model/AppearanceMode.h"
#include "model/BackgroundChoice.h"
#include "model/CaptureScope.h"
#include "model/CapturedShot.h"
#include "model/Geometry.h"
#include "model/Image.h"
#include "model/MenuBarConfig.h"

namespace zd {

class Placeholders;

// What a tile reads of the state owner's fields.
struct TileState {
    CaptureScope captureScope = CaptureScope::singleWindow;
    Size placeholderWindowSize;  // placeholderWindowSize(for:) of the state owner
    // The main screen a placeholder stands in for: it gives a placeholder the density a capture
    // of that screen would have, so a tile keeps the saved picture's proportions.
    std::optional<ScreenInfo> mainScreen;
    MenuBarConfig menuBar;
    std::vector<std::string> detectedMenuTitles;
    BackgroundChoice lightBackground;
    BackgroundChoice darkBackground;
    bool windowShadow = true;
    std::optional<Image> capturedMenuBarImage;
    double statusItemsLeftFraction = 1.0;  // MenuBarOCR.lastStatusItemsLeftFraction
};

// The inputs of the compositor for one tile of appearance `mode` (the plan entry's), with or
// without a real capture.
Compositor::Inputs tileInputs(AppearanceMode mode, const CapturedShot* real, Size canvas,
                              const TileState& state, Placeholders& placeholders);

// Composes one tile.
Image renderTile(AppearanceMode mode, const CapturedShot* real, Size canvas, const TileState& state,
                 Placeholders& placeholders, const Compositor::Platform& platform);

// Pixels per point of a placeholder: a window's is the screen's scale (2 without a screen), a
// desktop's is its width over the screen's width in points, as a capture of that screen has.
double placeholderPixelsPerPoint(bool fullDisplay, Size placeholderSize,
                                 const std::optional<ScreenInfo>& mainScreen);

// The canvas of a preview tile: the output canvas scaled so its long side is at most 720,
// never enlarged.
Size previewTileCanvas(Size canvasSize);

}  // namespace zd
