#include "common/SystemUpdater.h"

#import <Foundation/Foundation.h>

#if ZD_HAVE_SPARKLE
#import <Sparkle/Sparkle.h>
#endif

namespace zd::SystemUpdater {

#if ZD_HAVE_SPARKLE

namespace {

// Made once, on first use; Sparkle's own interface governs the checks, with no delegate.
SPUStandardUpdaterController* controller() {
    static SPUStandardUpdaterController* shared =
        [[SPUStandardUpdaterController alloc] initWithStartingUpdater:YES
                                                      updaterDelegate:nil
                                                   userDriverDelegate:nil];
    return shared;
}

}  // namespace

bool start() {
    return controller() != nil;
}

bool checkForUpdates() {
    [controller() checkForUpdates:nil];
    return true;
}

#else

bool start() {
    return false;
}

bool checkForUpdates() {
    return false;
}

#endif

}  // namespace zd::SystemUpdater
