#include "model/OutputSize.h"

#include <algorithm>

#include "env/ScreenBackend.h"

namespace zd {

Size resolvedSize(OutputSize size, int customWidth, int customHeight, const ScreenBackend& screens) {
    switch (size) {
        case OutputSize::mas2880: return {2880, 1800};
        case OutputSize::mas2560: return {2560, 1600};
        case OutputSize::mas1440: return {1440, 900};
        case OutputSize::mas1280: return {1280, 800};
        case OutputSize::custom:
            return {static_cast<double>(std::max(customWidth, 1)),
                    static_cast<double>(std::max(customHeight, 1))};
        case OutputSize::current:
            if (auto screen = screens.mainScreen()) {
                return {screen->frame.width * screen->backingScaleFactor,
                        screen->frame.height * screen->backingScaleFactor};
            }
            return {2880, 1800};
    }
    return {2880, 1800};
}

}  // namespace zd
