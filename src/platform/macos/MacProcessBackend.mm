#include "macos/MacProcessBackend.h"

#import <AppKit/AppKit.h>
#import <dispatch/dispatch.h>

#include <cmath>

#include "macos/CGImagePixels.h"
#include "macos/ObjectValues.h"

namespace zd::mac {

namespace {

// The size in points at which an application's icon is read.
constexpr CGFloat iconSide = 32;

std::optional<Image> iconOf(NSImage* icon) {
    if (icon == nil)
        return std::nullopt;
    NSRect area = NSMakeRect(0, 0, iconSide, iconSide);
    CGImageRef image = [icon CGImageForProposedRect:&area context:nil hints:nil];
    return imageOf(image);
}

RunningApplication recordOf(NSRunningApplication* app) {
    RunningApplication record;
    record.pid = app.processIdentifier;
    if (NSString* identifier = app.bundleIdentifier)
        record.bundleIdentifier = textOf(identifier);
    record.localizedName = textOf(app.localizedName);
    record.executable = textOf(app.executableURL.path);
    if (NSDate* launched = app.launchDate) {
        const auto since = std::chrono::duration<double>(launched.timeIntervalSince1970);
        record.launchDate = std::chrono::system_clock::time_point(
            std::chrono::duration_cast<std::chrono::system_clock::duration>(since));
    }
    record.icon = iconOf(app.icon);
    record.activationPolicy = static_cast<ActivationPolicy>(app.activationPolicy);
    record.isTerminated = app.isTerminated;
    return record;
}

NSRunningApplication* applicationOf(std::int32_t pid) {
    return [NSRunningApplication runningApplicationWithProcessIdentifier:pid];
}

}  // namespace

std::optional<RunningApplication> MacProcessBackend::runningApplication(std::int32_t pid) const {
    @autoreleasepool {
        NSRunningApplication* app = applicationOf(pid);
        if (app == nil)
            return std::nullopt;
        return recordOf(app);
    }
}

std::vector<RunningApplication> MacProcessBackend::runningApplications(
    const std::string& bundleIdentifier) const {
    @autoreleasepool {
        std::vector<RunningApplication> result;
        for (NSRunningApplication* app in [NSRunningApplication
                 runningApplicationsWithBundleIdentifier:stringOf(bundleIdentifier)])
            result.push_back(recordOf(app));
        return result;
    }
}

bool MacProcessBackend::activate(std::int32_t pid) {
    @autoreleasepool {
        NSRunningApplication* app = applicationOf(pid);
        return app != nil && [app activateWithOptions:NSApplicationActivateIgnoringOtherApps];
    }
}

bool MacProcessBackend::terminate(std::int32_t pid) {
    @autoreleasepool {
        NSRunningApplication* app = applicationOf(pid);
        return app != nil && [app terminate];
    }
}

bool MacProcessBackend::forceTerminate(std::int32_t pid) {
    @autoreleasepool {
        NSRunningApplication* app = applicationOf(pid);
        return app != nil && [app forceTerminate];
    }
}

std::optional<std::string> MacProcessBackend::applicationLocation(
    const std::string& bundleIdentifier) const {
    @autoreleasepool {
        NSURL* url = [[NSWorkspace sharedWorkspace]
            URLForApplicationWithBundleIdentifier:stringOf(bundleIdentifier)];
        if (url == nil)
            return std::nullopt;
        return textOf(url.path);
    }
}

Expected<std::int32_t, std::string> MacProcessBackend::launch(const LaunchRequest& request) {
    @autoreleasepool {
        NSWorkspaceOpenConfiguration* configuration = [NSWorkspaceOpenConfiguration configuration];
        configuration.activates = request.activates;
        configuration.createsNewApplicationInstance = request.createsNewInstance;
        configuration.addsToRecentItems = NO;
        NSMutableArray<NSString*>* arguments = [NSMutableArray array];
        for (const std::string& argument : request.arguments)
            [arguments addObject:stringOf(argument)];
        configuration.arguments = arguments;
        if (!request.environment.empty()) {
            NSMutableDictionary<NSString*, NSString*>* environment =
                [NSMutableDictionary dictionary];
            for (const auto& [name, value] : request.environment)
                environment[stringOf(name)] = stringOf(value);
            configuration.environment = environment;
        }
        __block std::int32_t pid = 0;
        __block NSString* failure = nil;
        dispatch_semaphore_t started = dispatch_semaphore_create(0);
        [[NSWorkspace sharedWorkspace]
            openApplicationAtURL:[NSURL fileURLWithPath:stringOf(request.location)]
                   configuration:configuration
               completionHandler:^(NSRunningApplication* _Nullable app, NSError* _Nullable error) {
                 if (app != nil)
                     pid = app.processIdentifier;
                 else
                     failure = error != nil ? error.localizedDescription
                                            : @"The application didn't start";
                 dispatch_semaphore_signal(started);
               }];
        dispatch_semaphore_wait(started, DISPATCH_TIME_FOREVER);
        if (failure != nil)
            return unexpected(textOf(failure));
        return pid;
    }
}

std::int32_t MacProcessBackend::currentProcessId() const {
    return [NSProcessInfo processInfo].processIdentifier;
}

}  // namespace zd::mac
