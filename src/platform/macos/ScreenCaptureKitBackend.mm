#include "macos/ScreenCaptureKitBackend.h"

#import <CoreImage/CoreImage.h>
#import <CoreMedia/CoreMedia.h>
#import <Foundation/Foundation.h>
#import <ScreenCaptureKit/ScreenCaptureKit.h>
#import <dispatch/dispatch.h>

#include <atomic>
#include <memory>

#include "macos/CGImagePixels.h"
#include "macos/ObjectValues.h"

// Takes the first frame of a stream and ends it: the capture road of macOS 13, which has no
// screenshot manager. `done` is set once; later frames change nothing.
@interface ZDOneFrameCollector : NSObject <SCStreamOutput, SCStreamDelegate>
- (instancetype)initWithCompletion:(void (^)(CGImageRef image, NSError* error))completion;
@end

@implementation ZDOneFrameCollector {
    void (^completion_)(CGImageRef, NSError*);
    BOOL done_;
}

- (instancetype)initWithCompletion:(void (^)(CGImageRef, NSError*))completion {
    if ((self = [super init]))
        completion_ = [completion copy];
    return self;
}

- (void)stream:(SCStream*)stream
    didOutputSampleBuffer:(CMSampleBufferRef)sampleBuffer
                   ofType:(SCStreamOutputType)type {
    if (done_ || type != SCStreamOutputTypeScreen)
        return;
    CVImageBufferRef pixels = CMSampleBufferGetImageBuffer(sampleBuffer);
    if (pixels == nullptr)
        return;
    done_ = YES;
    CIImage* frame = [[CIImage alloc] initWithCVPixelBuffer:pixels];
    CGImageRef image = [[[CIContext alloc] init] createCGImage:frame fromRect:frame.extent];
    completion_(image, nil);
    CGImageRelease(image);
    [stream stopCaptureWithCompletionHandler:^(NSError* _Nullable){
    }];
}

- (void)stream:(SCStream*)stream didStopWithError:(NSError*)error {
    (void)stream;
    if (!done_)
        completion_(nullptr, error);
}

@end

namespace zd::mac {

namespace {

std::string describe(NSError* error) {
    return error != nil ? textOf(error.localizedDescription) : std::string();
}

Rect rectOf(CGRect frame) {
    return {frame.origin.x, frame.origin.y, frame.size.width, frame.size.height};
}

// Blocks this worker thread until the content query answers.
SCShareableContent* queryContent(NSError** failure) {
    __block SCShareableContent* content = nil;
    __block NSError* error = nil;
    dispatch_semaphore_t answered = dispatch_semaphore_create(0);
    [SCShareableContent
        getShareableContentExcludingDesktopWindows:NO
                               onScreenWindowsOnly:NO
                                 completionHandler:^(SCShareableContent* _Nullable found,
                                                     NSError* _Nullable queryError) {
                                   content = found;
                                   error = queryError;
                                   dispatch_semaphore_signal(answered);
                                 }];
    dispatch_semaphore_wait(answered, DISPATCH_TIME_FOREVER);
    *failure = error;
    return content;
}

SCStreamConfiguration* streamConfiguration(const WindowCaptureConfiguration& settings) {
    SCStreamConfiguration* configuration = [[SCStreamConfiguration alloc] init];
    configuration.width = static_cast<size_t>(settings.width);
    configuration.height = static_cast<size_t>(settings.height);
    configuration.showsCursor = settings.showsCursor;
    configuration.capturesAudio = settings.capturesAudio;
    configuration.scalesToFit = settings.scalesToFit;
    if (settings.backgroundColor) {
        const Color& c = *settings.backgroundColor;
        CGColorRef background = CGColorCreateSRGB(c.red, c.green, c.blue, c.alpha);
        configuration.backgroundColor = background;
        CGColorRelease(background);
    }
    if (settings.ignoresShadowsSingleWindow) {
        if (@available(macOS 14.0, *))
            configuration.ignoreShadowsSingleWindow = YES;
    }
    return configuration;
}

// One frame as a retained image, or the error of whichever road was taken. Blocks until the
// road's completion has run.
Expected<Image, CaptureFailure> captureFrame(SCContentFilter* filter,
                                             SCStreamConfiguration* configuration) {
    __block std::optional<Image> picture;
    __block NSError* failure = nil;
    __block bool converted = false;
    dispatch_semaphore_t finished = dispatch_semaphore_create(0);
    // The stream may report a failed start and a stop both; the first report counts.
    auto reported = std::make_shared<std::atomic<bool>>(false);
    void (^deliver)(CGImageRef, NSError*) = ^(CGImageRef image, NSError* error) {
      if (reported->exchange(true))
          return;
      if (image != nullptr) {
          picture = imageOf(image);
          converted = picture.has_value();
      }
      failure = error;
      dispatch_semaphore_signal(finished);
    };
    ZDOneFrameCollector* collector = nil;
    SCStream* stream = nil;
    if (@available(macOS 14.0, *)) {
        [SCScreenshotManager
            captureImageWithFilter:filter
                     configuration:configuration
                 completionHandler:^(CGImageRef _Nullable image, NSError* _Nullable error) {
                   deliver(image, error);
                 }];
    } else {
        collector = [[ZDOneFrameCollector alloc] initWithCompletion:deliver];
        stream = [[SCStream alloc] initWithFilter:filter
                                    configuration:configuration
                                         delegate:collector];
        NSError* addError = nil;
        if (![stream addStreamOutput:collector
                                type:SCStreamOutputTypeScreen
                  sampleHandlerQueue:dispatch_get_global_queue(QOS_CLASS_USER_INITIATED, 0)
                               error:&addError])
            return unexpected(CaptureFailure::system(describe(addError)));
        [stream startCaptureWithCompletionHandler:^(NSError* _Nullable startError) {
          if (startError != nil)
              deliver(nullptr, startError);
        }];
    }
    dispatch_semaphore_wait(finished, DISPATCH_TIME_FOREVER);
    if (converted)
        return *picture;
    if (failure != nil)
        return unexpected(CaptureFailure::system(describe(failure)));
    return unexpected(CaptureFailure::of(CaptureError::noContent));
}

}  // namespace

Expected<ShareableContent, std::string> ScreenCaptureKitBackend::shareableContent() {
    @autoreleasepool {
        NSError* error = nil;
        SCShareableContent* content = queryContent(&error);
        if (content == nil)
            return unexpected(error != nil ? describe(error) : std::string("No shareable content"));
        ShareableContent result;
        for (SCDisplay* display in content.displays)
            result.displays.push_back({display.displayID, static_cast<int>(display.width),
                                       static_cast<int>(display.height)});
        for (SCWindow* window in content.windows) {
            ShareableWindow entry;
            entry.windowID = window.windowID;
            entry.frame = rectOf(window.frame);
            if (SCRunningApplication* owner = window.owningApplication)
                entry.owningApplication =
                    ShareableApplication{owner.processID, textOf(owner.applicationName)};
            if (NSString* title = window.title)
                entry.title = textOf(title);
            entry.windowLayer = static_cast<int>(window.windowLayer);
            result.windows.push_back(std::move(entry));
        }
        return result;
    }
}

Expected<Image, CaptureFailure> ScreenCaptureKitBackend::captureWindow(
    const ShareableWindow& window, const WindowCaptureConfiguration& configuration) {
    @autoreleasepool {
        NSError* error = nil;
        SCShareableContent* content = queryContent(&error);
        if (content == nil)
            return unexpected(CaptureFailure::of(CaptureError::permissionDenied));
        SCWindow* found = nil;
        for (SCWindow* candidate in content.windows) {
            if (candidate.windowID == window.windowID) {
                found = candidate;
                break;
            }
        }
        if (found == nil)
            return unexpected(CaptureFailure::of(CaptureError::windowNotFound));
        SCContentFilter* filter = [[SCContentFilter alloc] initWithDesktopIndependentWindow:found];
        return captureFrame(filter, streamConfiguration(configuration));
    }
}

}  // namespace zd::mac
