#include "macos/FloatingPanelWindow.h"

#import <AppKit/AppKit.h>

namespace zd::mac::FloatingPanelWindow {

namespace {

NSWindow* windowOf(std::uintptr_t nativeView) {
    NSView* view = (__bridge NSView*)reinterpret_cast<void*>(nativeView);
    return view.window;
}

}  // namespace

void configure(std::uintptr_t nativeView) {
    NSWindow* window = windowOf(nativeView);
    if (window == nil)
        return;
    if ([window isKindOfClass:[NSPanel class]]) {
        NSPanel* panel = static_cast<NSPanel*>(window);
        panel.styleMask = NSWindowStyleMaskNonactivatingPanel;
        panel.floatingPanel = YES;
        panel.hidesOnDeactivate = NO;
    }
    window.level = NSFloatingWindowLevel;
    // Every desktop, fixed in place when desktops switch, beside full-screen windows.
    NSWindowCollectionBehavior behaviour = NSWindowCollectionBehaviorCanJoinAllSpaces;
    behaviour |= NSWindowCollectionBehaviorStationary;
    behaviour |= NSWindowCollectionBehaviorFullScreenAuxiliary;
    window.collectionBehavior = behaviour;
    window.opaque = NO;
    window.backgroundColor = [NSColor clearColor];
    window.hasShadow = YES;
    window.releasedWhenClosed = NO;
}

void orderFrontRegardless(std::uintptr_t nativeView) {
    [windowOf(nativeView) orderFrontRegardless];
}

}  // namespace zd::mac::FloatingPanelWindow
