// ContentView: the bridge from the window's settings to the compositor, for preview tiles
// and for saved shots alike.

#include "composition/Compositor.h"
#include "composition/MenuTitles.h"
#include "env/Environment.h"
#include "env/ScreenBackend.h"
#include "store/FlathubExport.h"
#include "ui/ContentView.h"

namespace zd {

TileState ContentView::tileState() const {
    TileState state;
    state.captureScope = captureScope;
    state.placeholderWindowSize = placeholderWindowSize(canvasSize());
    if (env_.screens)
        state.mainScreen = env_.screens->mainScreen();
    state.menuBar = menuBar;
    state.detectedMenuTitles = detectedMenuTitles;
    state.lightBackground = lightBackground;
    state.darkBackground = darkBackground;
    state.windowShadow = windowShadow;
    state.capturedMenuBarImage = capturedMenuBarImage;
    state.statusItemsLeftFraction = statusItemsLeftFraction;
    return state;
}

Image ContentView::renderTile(const PlanEntry& entry, const CapturedShot* real, Size canvas) const {
    if (store == Store::flathub)
        return renderFlathubTile(entry, real, canvas);
    const std::optional<Compositor::Platform> platform = Compositor::platformOf(env_);
    if (!platform)
        return Image();
    if (!placeholders_)
        placeholders_ = std::make_unique<Placeholders>(*env_.canvases);
    TileState state = tileState();
    // The picture's own titles, in its language; an empty language is the target's current one.
    const std::string& code = real ? real->languageCode : entry.languageCode;
    state.detectedMenuTitles =
        MenuTitles::forPicture(real ? real->menuTitles : std::nullopt, detectedMenuTitles,
                               menuBar.menuTitles, code.empty() ? targetCurrentLangCode : code);
    return zd::renderTile(entry.mode, real, canvas, state, *placeholders_, *platform);
}

ShotComposer ContentView::savedShotComposer() const {
    if (store == Store::flathub) {
        // Each picture as large as its own window (see pictureCanvas).
        const CanvasFactory* canvases = env_.canvases;
        const double scale = captureScale();
        return [canvases, scale](const CapturedShot& shot) {
            if (!canvases)
                return Image();
            const Size canvas = FlathubExport::canvas(
                {static_cast<double>(shot.image.width()), static_cast<double>(shot.image.height())},
                scale);
            return FlathubExport::render(shot.image, canvas, scale, *canvases);
        };
    }
    const std::optional<Compositor::Platform> platform = Compositor::platformOf(env_);
    // Placeholders of its own: the view's are made lazily on the UI thread.
    std::shared_ptr<Placeholders> placeholders;
    if (env_.canvases)
        placeholders = std::make_shared<Placeholders>(*env_.canvases);
    return [platform, placeholders, state = tileState(), canvas = canvasSize(),
            recognised = detectedMenuTitles, configured = menuBar.menuTitles,
            currentCode = targetCurrentLangCode](const CapturedShot& shot) {
        if (!platform || !placeholders)
            return Image();
        TileState pictureState = state;
        // The picture's own titles, in its language, as renderTile picks them.
        pictureState.detectedMenuTitles =
            MenuTitles::forPicture(shot.menuTitles, recognised, configured,
                                   shot.languageCode.empty() ? currentCode : shot.languageCode);
        return zd::renderTile(shot.mode, &shot, canvas, pictureState, *placeholders, *platform);
    };
}

}  // namespace zd
