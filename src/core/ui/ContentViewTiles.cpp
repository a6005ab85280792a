// ContentView: the bridge from the window's settings to the compositor, for preview tiles
// and for saved shots alike.

#include "composition/Compositor.h"
#include "composition/MenuTitles.h"
#include "env/Environment.h"
#include "env/ScreenBackend.h"
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

}  // namespace zd
