// What the macOS SDK has and GNUstep lacks, beyond Foundation (ZdFoundationSdk.h): Core
// Graphics, Accessibility, AppKit's newer members, ScreenCaptureKit, Core Media and Core
// Video, Core Image, Vision, Uniform Type Identifiers and Sparkle. Transcribed from Apple's
// documentation (and Sparkle's) for the Apple-target check only; the same rules as in
// ZdFoundationSdk.h apply: only what a backend needs, each with its page.
#pragma once

#include <AppKit/AppKit.h>

#include "ZdFoundationSdk.h"

extern "C" {

// ---- Core Graphics ------------------------------------------------------------------------
// On macOS, NSRect, NSPoint and NSSize are these same structures.
// developer.apple.com/documentation/corefoundation/cgrect
typedef NSRect CGRect;
// developer.apple.com/documentation/corefoundation/cgpoint
typedef NSPoint CGPoint;
// developer.apple.com/documentation/corefoundation/cgsize
typedef NSSize CGSize;
// developer.apple.com/documentation/corefoundation/cgrectmake(_:_:_:_:)
static inline CGRect CGRectMake(CGFloat x, CGFloat y, CGFloat width, CGFloat height) {
    CGRect rect;
    rect.origin.x = x;
    rect.origin.y = y;
    rect.size.width = width;
    rect.size.height = height;
    return rect;
}
// developer.apple.com/documentation/corefoundation/cgpointmake(_:_:)
static inline CGPoint CGPointMake(CGFloat x, CGFloat y) {
    CGPoint point;
    point.x = x;
    point.y = y;
    return point;
}
// developer.apple.com/documentation/corefoundation/cgsizemake(_:_:)
static inline CGSize CGSizeMake(CGFloat width, CGFloat height) {
    CGSize size;
    size.width = width;
    size.height = height;
    return size;
}

// developer.apple.com/documentation/coregraphics/cgimage
typedef struct CF_BRIDGED_TYPE(id) CGImage* CGImageRef;
// developer.apple.com/documentation/coregraphics/cgcontext
typedef struct CF_BRIDGED_TYPE(id) CGContext* CGContextRef;
// developer.apple.com/documentation/coregraphics/cgcolor
typedef struct CF_BRIDGED_TYPE(id) CGColor* CGColorRef;
// developer.apple.com/documentation/coregraphics/cgcolorspace
typedef struct CF_BRIDGED_TYPE(id) CGColorSpace* CGColorSpaceRef;
// developer.apple.com/documentation/coregraphics/cgdataprovider
typedef struct CF_BRIDGED_TYPE(id) CGDataProvider* CGDataProviderRef;

// developer.apple.com/documentation/coregraphics/cgimagealphainfo
typedef CF_ENUM(uint32_t, CGImageAlphaInfo){
    kCGImageAlphaNone,
    kCGImageAlphaPremultipliedLast,
    kCGImageAlphaPremultipliedFirst,
    kCGImageAlphaLast,
    kCGImageAlphaFirst,
    kCGImageAlphaNoneSkipLast,
    kCGImageAlphaNoneSkipFirst,
    kCGImageAlphaOnly,
};
// developer.apple.com/documentation/coregraphics/cgbitmapinfo
typedef CF_OPTIONS(uint32_t, CGBitmapInfo){
    kCGBitmapAlphaInfoMask = 0x1F,
    kCGBitmapByteOrderMask = 0x7000,
    kCGBitmapByteOrderDefault = (0 << 12),
    kCGBitmapByteOrder16Little = (1 << 12),
    kCGBitmapByteOrder32Little = (2 << 12),
    kCGBitmapByteOrder16Big = (3 << 12),
    kCGBitmapByteOrder32Big = (4 << 12),
};
// developer.apple.com/documentation/coregraphics/cgcolorrenderingintent
typedef CF_ENUM(int32_t, CGColorRenderingIntent){
    kCGRenderingIntentDefault,
    kCGRenderingIntentAbsoluteColorimetric,
    kCGRenderingIntentRelativeColorimetric,
    kCGRenderingIntentPerceptual,
    kCGRenderingIntentSaturation,
};

// developer.apple.com/documentation/coregraphics/cgimage/width
size_t CGImageGetWidth(CGImageRef image);
// developer.apple.com/documentation/coregraphics/cgimage/height
size_t CGImageGetHeight(CGImageRef image);
// developer.apple.com/documentation/coregraphics/cgimagerelease
void CGImageRelease(CGImageRef image);
// developer.apple.com/documentation/coregraphics/cgimage/init(width:height:bitspercomponent:bitsperpixel:bytesperrow:space:bitmapinfo:provider:decode:shouldinterpolate:intent:)
CGImageRef CGImageCreate(size_t width, size_t height, size_t bitsPerComponent, size_t bitsPerPixel,
                         size_t bytesPerRow, CGColorSpaceRef space, CGBitmapInfo bitmapInfo,
                         CGDataProviderRef provider, const CGFloat* decode, bool shouldInterpolate,
                         CGColorRenderingIntent intent);
// developer.apple.com/documentation/coregraphics/cgcolorspacecreatedevicergb()
CGColorSpaceRef CGColorSpaceCreateDeviceRGB(void);
// developer.apple.com/documentation/coregraphics/cgcolorspacerelease
void CGColorSpaceRelease(CGColorSpaceRef space);
// developer.apple.com/documentation/coregraphics/cgbitmapcontextcreate(_:_:_:_:_:_:_:)
CGContextRef CGBitmapContextCreate(void* data, size_t width, size_t height,
                                   size_t bitsPerComponent, size_t bytesPerRow,
                                   CGColorSpaceRef space, uint32_t bitmapInfo);
// developer.apple.com/documentation/coregraphics/cgcontext/draw(_:in:byTiling:)
void CGContextDrawImage(CGContextRef c, CGRect rect, CGImageRef image);
// developer.apple.com/documentation/coregraphics/cgcontextrelease
void CGContextRelease(CGContextRef c);
// developer.apple.com/documentation/coregraphics/cgdataprovider/init(data:)
CGDataProviderRef CGDataProviderCreateWithCFData(CFDataRef data);
// developer.apple.com/documentation/coregraphics/cgdataproviderrelease
void CGDataProviderRelease(CGDataProviderRef provider);
// developer.apple.com/documentation/coregraphics/cgcolor/init(srgbred:green:blue:alpha:)
CGColorRef CGColorCreateSRGB(CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha);
// developer.apple.com/documentation/coregraphics/cgcolorrelease
void CGColorRelease(CGColorRef color);

// developer.apple.com/documentation/coregraphics/cgwindowid
typedef uint32_t CGWindowID;
// developer.apple.com/documentation/coregraphics/kcgnullwindowid
#define kCGNullWindowID ((CGWindowID)0)
// developer.apple.com/documentation/coregraphics/cgdirectdisplayid
typedef uint32_t CGDirectDisplayID;
// developer.apple.com/documentation/coregraphics/cgwindowlistoption
typedef CF_OPTIONS(uint32_t, CGWindowListOption){
    kCGWindowListOptionAll = 0,
    kCGWindowListOptionOnScreenOnly = (1 << 0),
    kCGWindowListOptionOnScreenAboveWindow = (1 << 1),
    kCGWindowListOptionOnScreenBelowWindow = (1 << 2),
    kCGWindowListOptionIncludingWindow = (1 << 3),
    kCGWindowListExcludeDesktopElements = (1 << 4),
};
// developer.apple.com/documentation/coregraphics/cgwindowlistcopywindowinfo(_:_:)
CFArrayRef CGWindowListCopyWindowInfo(CGWindowListOption option, CGWindowID relativeToWindow);

// ---- Accessibility (ApplicationServices, HIServices) --------------------------------------
// The analyzer knows the ownership rules of CF, CG and CM names by their prefix but not of AX
// names: the Create and Copy results that the pages tell the caller to release are marked.
// developer.apple.com/documentation/applicationservices/axuielement
typedef const struct CF_BRIDGED_TYPE(id) __AXUIElement* AXUIElementRef;
// developer.apple.com/documentation/applicationservices/axvalue
typedef const struct CF_BRIDGED_TYPE(id) __AXValue* AXValueRef;
// developer.apple.com/documentation/applicationservices/axerror
typedef CF_ENUM(int32_t, AXError){
    kAXErrorSuccess = 0,
    kAXErrorFailure = -25200,
    kAXErrorIllegalArgument = -25201,
    kAXErrorInvalidUIElement = -25202,
    kAXErrorCannotComplete = -25204,
    kAXErrorAttributeUnsupported = -25205,
    kAXErrorAPIDisabled = -25211,
};
// developer.apple.com/documentation/applicationservices/axvaluetype
typedef CF_ENUM(uint32_t, AXValueType){
    kAXValueTypeCGPoint = 1,
    kAXValueTypeCGSize = 2,
    kAXValueTypeCGRect = 3,
    kAXValueTypeCFRange = 4,
    kAXValueTypeAXError = 5,
    kAXValueTypeIllegal = 0,
};
// developer.apple.com/documentation/applicationservices/1459374-axuielementcreateapplication
AXUIElementRef AXUIElementCreateApplication(pid_t pid) CF_RETURNS_RETAINED;
// developer.apple.com/documentation/applicationservices/1462085-axuielementcopyattributevalue
AXError AXUIElementCopyAttributeValue(AXUIElementRef element, CFStringRef attribute,
                                      CFTypeRef* CF_RETURNS_RETAINED value);
// developer.apple.com/documentation/applicationservices/1460434-axuielementsetattributevalue
AXError AXUIElementSetAttributeValue(AXUIElementRef element, CFStringRef attribute,
                                     CFTypeRef value);
// developer.apple.com/documentation/applicationservices/1459744-axuielementgettypeid
CFTypeID AXUIElementGetTypeID(void);
// developer.apple.com/documentation/applicationservices/1462047-axvaluecreate
AXValueRef AXValueCreate(AXValueType theType, const void* valuePtr) CF_RETURNS_RETAINED;
// developer.apple.com/documentation/applicationservices/1459186-axisprocesstrustedwithoptions
Boolean AXIsProcessTrustedWithOptions(CFDictionaryRef options);
// developer.apple.com/documentation/applicationservices/kaxtrustedcheckoptionprompt
extern const CFStringRef kAXTrustedCheckOptionPrompt;

// ---- Core Video and Core Media -------------------------------------------------------------
// developer.apple.com/documentation/corevideo/cvbuffer
typedef struct CF_BRIDGED_TYPE(id) __CVBuffer* CVBufferRef;
// developer.apple.com/documentation/corevideo/cvimagebuffer
typedef CVBufferRef CVImageBufferRef;
// developer.apple.com/documentation/corevideo/cvpixelbuffer
typedef CVImageBufferRef CVPixelBufferRef;
// developer.apple.com/documentation/coremedia/cmsamplebuffer
typedef struct CF_BRIDGED_TYPE(id) opaqueCMSampleBuffer* CMSampleBufferRef;
// developer.apple.com/documentation/coremedia/cmsamplebuffergetimagebuffer(_:)
CVImageBufferRef CMSampleBufferGetImageBuffer(CMSampleBufferRef sbuf);

}  // extern "C"

// ---- AppKit -------------------------------------------------------------------------------
@class UTType;

// developer.apple.com/documentation/appkit/nsworkspace/openconfiguration
API_AVAILABLE(macos(10.15))
@interface NSWorkspaceOpenConfiguration : NSObject <NSCopying>
// developer.apple.com/documentation/appkit/nsworkspace/openconfiguration/init()
+ (instancetype)configuration;
// developer.apple.com/documentation/appkit/nsworkspace/openconfiguration/activates
@property BOOL activates;
// developer.apple.com/documentation/appkit/nsworkspace/openconfiguration/addstorecentitems
@property BOOL addsToRecentItems;
// developer.apple.com/documentation/appkit/nsworkspace/openconfiguration/createsnewapplicationinstance
@property BOOL createsNewApplicationInstance;
// developer.apple.com/documentation/appkit/nsworkspace/openconfiguration/arguments
@property(copy) NSArray<NSString*>* arguments;
// developer.apple.com/documentation/appkit/nsworkspace/openconfiguration/environment
@property(copy) NSDictionary<NSString*, NSString*>* environment;
@end

@interface NSWorkspace (ZdSdk)
// developer.apple.com/documentation/appkit/nsworkspace/openapplication(at:configuration:completionhandler:)
- (void)openApplicationAtURL:(NSURL*)applicationURL
               configuration:(NSWorkspaceOpenConfiguration*)configuration
           completionHandler:(void (^_Nullable)(NSRunningApplication* _Nullable app,
                                                NSError* _Nullable error))completionHandler
    API_AVAILABLE(macos(10.15));
// developer.apple.com/documentation/appkit/nsworkspace/urlforapplication(withbundleidentifier:)
- (nullable NSURL*)URLForApplicationWithBundleIdentifier:(NSString*)bundleIdentifier;
// developer.apple.com/documentation/appkit/nsworkspace/activatefileviewerselecting(_:)
- (void)activateFileViewerSelectingURLs:(NSArray<NSURL*>*)fileURLs;
@end

// developer.apple.com/documentation/appkit/nsalert/style
typedef NS_ENUM(NSUInteger, ZdSdkAlertStyle){
    NSAlertStyleWarning = 0,
    NSAlertStyleInformational = 1,
    NSAlertStyleCritical = 2,
};

@interface NSSavePanel (ZdSdk)
// developer.apple.com/documentation/appkit/nssavepanel/allowedcontenttypes
@property(copy) NSArray<UTType*>* allowedContentTypes API_AVAILABLE(macos(11.0));
@end

@interface NSWindow (ZdSdk)
// developer.apple.com/documentation/appkit/nswindow/stylemask-swift.property
- (void)setStyleMask:(NSUInteger)styleMask;
@end

// developer.apple.com/documentation/appkit/nsimage/symbolconfiguration-swift.class
API_AVAILABLE(macos(11.0))
@interface NSImageSymbolConfiguration : NSObject <NSCopying, NSSecureCoding>
// developer.apple.com/documentation/appkit/nsimage/symbolconfiguration-swift.class/init(pointsize:weight:)
+ (instancetype)configurationWithPointSize:(CGFloat)pointSize weight:(NSFontWeight)weight;
@end

@interface NSImage (ZdSdk)
// developer.apple.com/documentation/appkit/nsimage/init(systemsymbolname:accessibilitydescription:)
+ (nullable instancetype)imageWithSystemSymbolName:(NSString*)name
                          accessibilityDescription:(nullable NSString*)description
    API_AVAILABLE(macos(11.0));
// developer.apple.com/documentation/appkit/nsimage/withsymbolconfiguration(_:)
- (nullable NSImage*)imageWithSymbolConfiguration:(NSImageSymbolConfiguration*)configuration
    API_AVAILABLE(macos(11.0));
@end

// ---- ScreenCaptureKit ---------------------------------------------------------------------
// developer.apple.com/documentation/screencapturekit/scrunningapplication
API_AVAILABLE(macos(12.3))
@interface SCRunningApplication : NSObject
@property(readonly) NSString* bundleIdentifier;
@property(readonly) NSString* applicationName;
@property(readonly) pid_t processID;
@end

// developer.apple.com/documentation/screencapturekit/scwindow
API_AVAILABLE(macos(12.3))
@interface SCWindow : NSObject
@property(readonly) CGWindowID windowID;
@property(readonly) CGRect frame;
@property(readonly, nullable) NSString* title;
@property(readonly) NSInteger windowLayer;
@property(readonly, nullable) SCRunningApplication* owningApplication;
@property(readonly, getter=isOnScreen) BOOL onScreen;
@end

// developer.apple.com/documentation/screencapturekit/scdisplay
API_AVAILABLE(macos(12.3))
@interface SCDisplay : NSObject
@property(readonly) CGDirectDisplayID displayID;
@property(readonly) NSInteger width;
@property(readonly) NSInteger height;
@property(readonly) CGRect frame;
@end

// developer.apple.com/documentation/screencapturekit/scshareablecontent
API_AVAILABLE(macos(12.3))
@interface SCShareableContent : NSObject
// developer.apple.com/documentation/screencapturekit/scshareablecontent/getexcludingdesktopwindows(_:onscreenwindowsonly:completionhandler:)
+ (void)getShareableContentExcludingDesktopWindows:(BOOL)excludeDesktopWindows
                               onScreenWindowsOnly:(BOOL)onScreenWindowsOnly
                                 completionHandler:
                                     (void (^)(SCShareableContent* _Nullable shareableContent,
                                               NSError* _Nullable error))completionHandler;
@property(readonly) NSArray<SCWindow*>* windows;
@property(readonly) NSArray<SCDisplay*>* displays;
@property(readonly) NSArray<SCRunningApplication*>* applications;
@end

// developer.apple.com/documentation/screencapturekit/sccontentfilter
API_AVAILABLE(macos(12.3))
@interface SCContentFilter : NSObject
// developer.apple.com/documentation/screencapturekit/sccontentfilter/init(desktopindependentwindow:)
- (instancetype)initWithDesktopIndependentWindow:(SCWindow*)window;
@end

// developer.apple.com/documentation/screencapturekit/scstreamconfiguration
API_AVAILABLE(macos(12.3))
@interface SCStreamConfiguration : NSObject
@property size_t width;
@property size_t height;
@property BOOL showsCursor;
@property BOOL scalesToFit;
// developer.apple.com/documentation/screencapturekit/scstreamconfiguration/capturesaudio
@property BOOL capturesAudio API_AVAILABLE(macos(13.0));
// developer.apple.com/documentation/screencapturekit/scstreamconfiguration/backgroundcolor
@property CGColorRef backgroundColor;
// developer.apple.com/documentation/screencapturekit/scstreamconfiguration/ignoreshadowssinglewindow
@property BOOL ignoreShadowsSingleWindow API_AVAILABLE(macos(14.0));
@end

// developer.apple.com/documentation/screencapturekit/scstreamoutputtype
typedef NS_ENUM(NSInteger, SCStreamOutputType){
    SCStreamOutputTypeScreen,
    SCStreamOutputTypeAudio API_AVAILABLE(macos(13.0)),
};

@class SCStream;

// developer.apple.com/documentation/screencapturekit/scstreamoutput
API_AVAILABLE(macos(12.3))
@protocol SCStreamOutput <NSObject>
@optional
// developer.apple.com/documentation/screencapturekit/scstreamoutput/stream(_:didoutputsamplebuffer:of:)
- (void)stream:(SCStream*)stream
    didOutputSampleBuffer:(CMSampleBufferRef)sampleBuffer
                   ofType:(SCStreamOutputType)type;
@end

// developer.apple.com/documentation/screencapturekit/scstreamdelegate
API_AVAILABLE(macos(12.3))
@protocol SCStreamDelegate <NSObject>
@optional
// developer.apple.com/documentation/screencapturekit/scstreamdelegate/stream(_:didstopwitherror:)
- (void)stream:(SCStream*)stream didStopWithError:(NSError*)error;
@end

// developer.apple.com/documentation/screencapturekit/scstream
API_AVAILABLE(macos(12.3))
@interface SCStream : NSObject
// developer.apple.com/documentation/screencapturekit/scstream/init(filter:configuration:delegate:)
- (instancetype)initWithFilter:(SCContentFilter*)contentFilter
                 configuration:(SCStreamConfiguration*)streamConfig
                      delegate:(nullable id<SCStreamDelegate>)delegate;
// developer.apple.com/documentation/screencapturekit/scstream/addstreamoutput(_:type:samplehandlerqueue:)
- (BOOL)addStreamOutput:(id<SCStreamOutput>)output
                   type:(SCStreamOutputType)type
     sampleHandlerQueue:(nullable dispatch_queue_t)sampleHandlerQueue
                  error:(NSError**)error;
// developer.apple.com/documentation/screencapturekit/scstream/startcapture(completionhandler:)
- (void)startCaptureWithCompletionHandler:(void (^_Nullable)(NSError* _Nullable error))completionHandler;
// developer.apple.com/documentation/screencapturekit/scstream/stopcapture(completionhandler:)
- (void)stopCaptureWithCompletionHandler:(void (^_Nullable)(NSError* _Nullable error))completionHandler;
@end

// developer.apple.com/documentation/screencapturekit/scscreenshotmanager
API_AVAILABLE(macos(14.0))
@interface SCScreenshotManager : NSObject
// developer.apple.com/documentation/screencapturekit/scscreenshotmanager/captureimage(contentfilter:configuration:completionhandler:)
+ (void)captureImageWithFilter:(SCContentFilter*)contentFilter
                 configuration:(SCStreamConfiguration*)config
             completionHandler:(void (^_Nullable)(CGImageRef _Nullable sampleBuffer,
                                                  NSError* _Nullable error))completionHandler;
@end

// ---- Core Image ---------------------------------------------------------------------------
// developer.apple.com/documentation/coreimage/ciimage
@interface CIImage : NSObject <NSCopying, NSSecureCoding>
// developer.apple.com/documentation/coreimage/ciimage/init(cvpixelbuffer:)
- (instancetype)initWithCVPixelBuffer:(CVPixelBufferRef)pixelBuffer;
// developer.apple.com/documentation/coreimage/ciimage/extent
@property(readonly) CGRect extent;
@end

// developer.apple.com/documentation/coreimage/cicontext
@interface CIContext : NSObject
- (instancetype)init;
// developer.apple.com/documentation/coreimage/cicontext/createcgimage(_:from:)
- (nullable CGImageRef)createCGImage:(CIImage*)image fromRect:(CGRect)fromRect CF_RETURNS_RETAINED;
@end

// ---- Vision -------------------------------------------------------------------------------
// developer.apple.com/documentation/vision/vnconfidence
typedef float VNConfidence;

// developer.apple.com/documentation/vision/vnobservation
@interface VNObservation : NSObject <NSCopying, NSSecureCoding>
@property(readonly) VNConfidence confidence;
@end

// developer.apple.com/documentation/vision/vndetectedobjectobservation
@interface VNDetectedObjectObservation : VNObservation
// developer.apple.com/documentation/vision/vndetectedobjectobservation/boundingbox
@property(readonly) CGRect boundingBox;
@end

// developer.apple.com/documentation/vision/vnrectangleobservation
@interface VNRectangleObservation : VNDetectedObjectObservation
@end

// developer.apple.com/documentation/vision/vnrecognizedtext
API_AVAILABLE(macos(10.15))
@interface VNRecognizedText : NSObject <NSCopying, NSSecureCoding>
@property(readonly, copy) NSString* string;
@property(readonly) VNConfidence confidence;
@end

// developer.apple.com/documentation/vision/vnrecognizedtextobservation
API_AVAILABLE(macos(10.15))
@interface VNRecognizedTextObservation : VNRectangleObservation
// developer.apple.com/documentation/vision/vnrecognizedtextobservation/topcandidates(_:)
- (NSArray<VNRecognizedText*>*)topCandidates:(NSUInteger)maxCandidateCount;
@end

// developer.apple.com/documentation/vision/vnrequest
@interface VNRequest : NSObject <NSCopying>
@end

// developer.apple.com/documentation/vision/vnimagebasedrequest
@interface VNImageBasedRequest : VNRequest
@end

// developer.apple.com/documentation/vision/vnrequesttextrecognitionlevel
typedef NS_ENUM(NSInteger, VNRequestTextRecognitionLevel){
    VNRequestTextRecognitionLevelAccurate = 0,
    VNRequestTextRecognitionLevelFast,
};

// developer.apple.com/documentation/vision/vnrecognizetextrequest
API_AVAILABLE(macos(10.15))
@interface VNRecognizeTextRequest : VNImageBasedRequest
@property VNRequestTextRecognitionLevel recognitionLevel;
@property BOOL usesLanguageCorrection;
// developer.apple.com/documentation/vision/vnrecognizetextrequest/results
@property(readonly, copy, nullable) NSArray<VNRecognizedTextObservation*>* results;
@end

// developer.apple.com/documentation/vision/vnimageoption
typedef NSString* VNImageOption;

// developer.apple.com/documentation/vision/vnimagerequesthandler
@interface VNImageRequestHandler : NSObject
// developer.apple.com/documentation/vision/vnimagerequesthandler/init(cgimage:options:)
- (instancetype)initWithCGImage:(CGImageRef)image options:(NSDictionary<VNImageOption, id>*)options;
// developer.apple.com/documentation/vision/vnimagerequesthandler/perform(_:)
- (BOOL)performRequests:(NSArray<VNRequest*>*)requests error:(NSError**)error;
@end

// ---- Uniform Type Identifiers ------------------------------------------------------------
// developer.apple.com/documentation/uniformtypeidentifiers/uttype-swift.struct
API_AVAILABLE(macos(11.0))
@interface UTType : NSObject <NSCopying, NSSecureCoding>
@end
extern "C" {
// developer.apple.com/documentation/uniformtypeidentifiers/uttypepng
extern UTType* const UTTypePNG API_AVAILABLE(macos(11.0));
// developer.apple.com/documentation/uniformtypeidentifiers/uttypejpeg
extern UTType* const UTTypeJPEG API_AVAILABLE(macos(11.0));
// developer.apple.com/documentation/uniformtypeidentifiers/uttypeheic
extern UTType* const UTTypeHEIC API_AVAILABLE(macos(11.0));
// developer.apple.com/documentation/uniformtypeidentifiers/uttypetiff
extern UTType* const UTTypeTIFF API_AVAILABLE(macos(11.0));
// developer.apple.com/documentation/uniformtypeidentifiers/uttypeimage
extern UTType* const UTTypeImage API_AVAILABLE(macos(11.0));
}

// ---- Sparkle ------------------------------------------------------------------------------
// sparkle-project.org/documentation/api-reference/Classes/SPUStandardUpdaterController.html
@interface SPUStandardUpdaterController : NSObject
- (instancetype)initWithStartingUpdater:(BOOL)startUpdater
                        updaterDelegate:(nullable id)updaterDelegate
                     userDriverDelegate:(nullable id)userDriverDelegate;
- (void)checkForUpdates:(nullable id)sender;
@end
