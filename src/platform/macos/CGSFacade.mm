#include "macos/CGSFacade.h"

#import <Foundation/Foundation.h>

#include <dlfcn.h>

#include "macos/CGSPrivate.h"
#include "macos/ObjectValues.h"

namespace zd::mac::CGSFacade {

namespace {

// The symbol by name from what this process has loaded; null where the system lacks it.
template <typename Function>
Function* resolve(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_DEFAULT, name));
}

struct Calls {
    CGSMainConnectionIDFunction* mainConnection =
        resolve<CGSMainConnectionIDFunction>("CGSMainConnectionID");
    CGSGetActiveSpaceFunction* activeSpace =
        resolve<CGSGetActiveSpaceFunction>("CGSGetActiveSpace");
    CGSCopyManagedDisplaySpacesFunction* managedDisplaySpaces =
        resolve<CGSCopyManagedDisplaySpacesFunction>("CGSCopyManagedDisplaySpaces");
    CGSCopySpacesForWindowsFunction* spacesForWindows =
        resolve<CGSCopySpacesForWindowsFunction>("CGSCopySpacesForWindows");
};

const Calls& calls() {
    static const Calls resolved;
    return resolved;
}

}  // namespace

std::optional<std::uint64_t> activeSpace() {
    const Calls& c = calls();
    if (c.mainConnection == nullptr || c.activeSpace == nullptr)
        return std::nullopt;
    return c.activeSpace(c.mainConnection());
}

Value managedDisplaySpaces() {
    const Calls& c = calls();
    if (c.mainConnection == nullptr || c.managedDisplaySpaces == nullptr)
        return Value();
    @autoreleasepool {
        CFArrayRef reply = c.managedDisplaySpaces(c.mainConnection());
        if (reply == nullptr)
            return Value();
        NSArray* displays = CFBridgingRelease(reply);
        return valueOf(displays);
    }
}

Value spacesForWindows(const std::vector<std::uint32_t>& windows, int mask) {
    const Calls& c = calls();
    if (c.mainConnection == nullptr || c.spacesForWindows == nullptr)
        return Value();
    @autoreleasepool {
        NSMutableArray<NSNumber*>* numbers = [NSMutableArray arrayWithCapacity:windows.size()];
        for (std::uint32_t window : windows)
            [numbers addObject:@(window)];
        CFArrayRef reply =
            c.spacesForWindows(c.mainConnection(), mask, (__bridge CFArrayRef)numbers);
        if (reply == nullptr)
            return Value();
        NSArray* spaces = CFBridgingRelease(reply);
        return valueOf(spaces);
    }
}

}  // namespace zd::mac::CGSFacade
