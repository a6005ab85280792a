// ContentView: the store the pictures are made for — what it would say of the plan, and the
// Flathub export's pictures.

#include "env/CanvasFactory.h"
#include "env/ScreenBackend.h"
#include "store/FlathubExport.h"
#include "store/StoreRules.h"
#include "ui/ContentView.h"

namespace zd {

double ContentView::captureScale() const {
    if (env_.screens) {
        if (auto screen = env_.screens->mainScreen(); screen && screen->backingScaleFactor > 0)
            return screen->backingScaleFactor;
    }
    return 2.0;
}

Size ContentView::pictureCanvas(const CapturedShot& shot) const {
    if (store != Store::flathub)
        return canvasSize();
    return FlathubExport::canvas(
        {static_cast<double>(shot.image.width()), static_cast<double>(shot.image.height())},
        captureScale());
}

Image ContentView::renderFlathubTile(const PlanEntry& entry, const CapturedShot* real,
                                     Size canvas) const {
    if (!env_.canvases)
        return Image();
    Image window;
    if (real) {
        window = real->image;
    } else {
        // The planned window, as the run will size it.
        const Size planned =
            FlathubExport::withinLimit(placeholderWindowSize(canvas), captureScale());
        if (!placeholders_)
            placeholders_ = std::make_unique<Placeholders>(*env_.canvases);
        window = placeholders_->window(entry.mode, planned);
    }
    return FlathubExport::render(window, canvas, captureScale(), *env_.canvases);
}

std::optional<std::string> ContentView::storeWarning() const {
    StoreRules::PlannedPictures planned;
    planned.store = store;
    // The display's own size is known only where there is a display.
    const bool sizeKnown =
        outputSize != OutputSize::current || (env_.screens && env_.screens->mainScreen());
    if (sizeKnown)
        planned.canvas = canvasSize();
    planned.appearances = enabledAppearances;
    planned.lightBackground = lightBackground;
    planned.darkBackground = darkBackground;
    return StoreRules::planWarning(planned);
}

}  // namespace zd
