#include "macos/AppKitDialogBackend.h"

#import <AppKit/AppKit.h>
#import <UniformTypeIdentifiers/UniformTypeIdentifiers.h>
#import <dispatch/dispatch.h>

#include <cstdint>

#include "macos/ObjectValues.h"

namespace zd::mac {

namespace {

// How long after showing the folder the Finder is brought forward, in nanoseconds.
constexpr std::int64_t finderDelay = 100'000'000;

std::optional<std::string> runChooser(NSOpenPanel* panel) {
    if ([panel runModal] != NSModalResponseOK || panel.URL == nil)
        return std::nullopt;
    return textOf(panel.URL.path);
}

NSAlertStyle alertStyleOf(AlertStyle style) {
    switch (style) {
        case AlertStyle::warning:
            return NSAlertStyleWarning;
        case AlertStyle::informational:
            return NSAlertStyleInformational;
        case AlertStyle::critical:
            return NSAlertStyleCritical;
    }
    return NSAlertStyleWarning;
}

}  // namespace

std::optional<std::string> AppKitDialogBackend::chooseFolder(const std::string& message) {
    @autoreleasepool {
        NSOpenPanel* panel = [NSOpenPanel openPanel];
        panel.message = stringOf(message);
        panel.canChooseFiles = NO;
        panel.canChooseDirectories = YES;
        panel.canCreateDirectories = YES;
        return runChooser(panel);
    }
}

std::optional<std::string> AppKitDialogBackend::chooseImageFile(
    const std::vector<std::string>& /*extensions*/) {
    @autoreleasepool {
        NSOpenPanel* panel = [NSOpenPanel openPanel];
        panel.allowedContentTypes = @[ UTTypePNG, UTTypeJPEG, UTTypeHEIC, UTTypeTIFF, UTTypeImage ];
        panel.allowsMultipleSelection = NO;
        panel.canChooseDirectories = NO;
        return runChooser(panel);
    }
}

void AppKitDialogBackend::showAlert(const std::string& messageText,
                                    const std::string& informativeText, AlertStyle style,
                                    const std::vector<std::string>& buttons) {
    @autoreleasepool {
        NSAlert* alert = [[NSAlert alloc] init];
        alert.messageText = stringOf(messageText);
        alert.informativeText = stringOf(informativeText);
        alert.alertStyle = alertStyleOf(style);
        for (const std::string& title : buttons)
            [alert addButtonWithTitle:stringOf(title)];
        [alert runModal];
    }
}

void AppKitDialogBackend::revealFolder(const std::string& path) {
    @autoreleasepool {
        NSWorkspace* workspace = [NSWorkspace sharedWorkspace];
        NSString* folder = stringOf(path);
        if (![workspace selectFile:nil inFileViewerRootedAtPath:folder])
            [workspace activateFileViewerSelectingURLs:@[ [NSURL fileURLWithPath:folder] ]];
        // The Finder comes forward only once its window is there; a moment later it is.
        dispatch_after(dispatch_time(DISPATCH_TIME_NOW, finderDelay), dispatch_get_main_queue(), ^{
          NSRunningApplication* finder =
              [NSRunningApplication runningApplicationsWithBundleIdentifier:@"com.apple.finder"]
                  .firstObject;
          [finder activateWithOptions:NSApplicationActivateIgnoringOtherApps];
        });
    }
}

void AppKitDialogBackend::activateThisProgram() {
    [NSApp activateIgnoringOtherApps:YES];
}

}  // namespace zd::mac
