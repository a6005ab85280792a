#include "macos/CGWindowListBackend.h"

#import <CoreGraphics/CoreGraphics.h>
#import <Foundation/Foundation.h>

#include "macos/ObjectValues.h"

namespace zd::mac {

Value CGWindowListBackend::windowList(WindowListOption option) const {
    @autoreleasepool {
        // The option values are the window server's own, so they pass through unchanged.
        CFArrayRef list =
            CGWindowListCopyWindowInfo(static_cast<CGWindowListOption>(option), kCGNullWindowID);
        if (list == nullptr)
            return Value();
        NSArray* records = CFBridgingRelease(list);
        return valueOf(records);
    }
}

}  // namespace zd::mac
