#include "composition/TileRenderer.h"

#include <algorithm>

#include "composition/Placeholders.h"

namespace zd {

Compositor::Inputs tileInputs(AppearanceMode mode, const CapturedShot* real, Size canvas,
                              const TileState& state, Placeholders& placeholders) {
    const bool fullDisplay =
        real ? real->isFullDisplay : state.captureScope == CaptureScope::allWindows;
    Image image;
    if (real) {
        image = real->image;
    } else if (fullDisplay) {
        image = placeholders.fullDisplay(mode, state.placeholderWindowSize);
    } else {
        image = placeholders.window(mode, state.placeholderWindowSize);
    }
    if (!real) {
        // A copy that says its density; the cached picture stays shared.
        image.setPixelsPerPoint(
            placeholderPixelsPerPoint(fullDisplay, state.placeholderWindowSize, state.mainScreen));
    }

    // Titles read off the real bar win over the configured ones, for this picture only.
    MenuBarConfig menuBar = state.menuBar;
    if (!state.detectedMenuTitles.empty())
        menuBar.menuTitles = state.detectedMenuTitles;

    Compositor::Inputs inputs;
    inputs.windowImage = std::move(image);
    inputs.canvas = canvas;
    inputs.background = mode == AppearanceMode::dark ? state.darkBackground : state.lightBackground;
    inputs.mode = mode;
    inputs.menuBar = std::move(menuBar);
    inputs.applyShadow = state.windowShadow;
    inputs.isFullDisplayCapture = fullDisplay;
    inputs.capturedMenuBar = state.capturedMenuBarImage;
    inputs.statusItemsLeftFraction = state.statusItemsLeftFraction;
    return inputs;
}

Image renderTile(AppearanceMode mode, const CapturedShot* real, Size canvas, const TileState& state,
                 Placeholders& placeholders, const Compositor::Platform& platform) {
    return Compositor::render(tileInputs(mode, real, canvas, state, placeholders), platform);
}

double placeholderPixelsPerPoint(bool fullDisplay, Size placeholderSize,
                                 const std::optional<ScreenInfo>& mainScreen) {
    constexpr double fallbackScale = 2.0;
    if (!mainScreen)
        return fallbackScale;
    if (fullDisplay && mainScreen->frame.width > 0 && placeholderSize.width > 0)
        return placeholderSize.width / mainScreen->frame.width;
    return mainScreen->backingScaleFactor > 0 ? mainScreen->backingScaleFactor : fallbackScale;
}

Size previewTileCanvas(Size canvasSize) {
    const double f = std::min(720.0 / std::max(canvasSize.width, canvasSize.height), 1.0);
    return {canvasSize.width * f, canvasSize.height * f};
}

}  // namespace zd
