// ContentView: what the chosen store would say of the planned pictures.

#include "env/ScreenBackend.h"
#include "store/StoreRules.h"
#include "ui/ContentView.h"

namespace zd {

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
