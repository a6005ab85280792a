#include "macos/NSScreenBackend.h"

#import <AppKit/AppKit.h>

namespace zd::mac {

namespace {

Rect rectOf(NSRect rect) {
    return {rect.origin.x, rect.origin.y, rect.size.width, rect.size.height};
}

std::optional<ScreenInfo> infoOf(NSScreen* screen) {
    if (screen == nil)
        return std::nullopt;
    return ScreenInfo{rectOf(screen.frame), rectOf(screen.visibleFrame),
                      static_cast<double>(screen.backingScaleFactor)};
}

}  // namespace

std::optional<ScreenInfo> NSScreenBackend::mainScreen() const {
    @autoreleasepool {
        return infoOf([NSScreen mainScreen]);
    }
}

std::optional<ScreenInfo> NSScreenBackend::primaryScreen() const {
    @autoreleasepool {
        // The first screen holds the menu bar and the origin of every screen's frame.
        return infoOf([NSScreen screens].firstObject);
    }
}

}  // namespace zd::mac
