// What the macOS SDK's Foundation level has and GNUstep's Foundation lacks, transcribed from
// Apple's documentation for the Apple-target check of src/platform/macos (AppleCheck.cmake).
// Nothing here is compiled into the program: on a Mac the real SDK headers are used.
//
// Rules: a declaration is added only when a backend needs it; each carries the page it was
// transcribed from (developer.apple.com/documentation/…). Availability is written out where
// that page gives macOS 12 or later, so the check enforces macOS 13 as the SDK would; older
// calls carry none. A mistake here is a mistake the check can't see: keep these
// transcriptions literal.
#pragma once

#include <stddef.h>
#include <stdint.h>

// ---- SDK macros -------------------------------------------------------------------------
// developer.apple.com/documentation/swift/marking-api-availability-in-objective-c
// API_AVAILABLE(macos(14.0)) becomes availability(macos, introduced=14.0).
#define ZD_SDK_AVAILABILITY_macos(version) availability(macos, introduced = version)
#define API_AVAILABLE(platform) __attribute__((ZD_SDK_AVAILABILITY_##platform))
#define CF_RETURNS_RETAINED __attribute__((cf_returns_retained))
#define CF_RETURNS_NOT_RETAINED __attribute__((cf_returns_not_retained))
#define CF_BRIDGED_TYPE(T) __attribute__((objc_bridge(T)))
#define CF_CONSUMED __attribute__((cf_consumed))
#ifndef NS_INLINE
#define NS_INLINE static inline __attribute__((always_inline))
#endif
// C++ form of CF_ENUM / CF_OPTIONS (CFAvailability.h): the type, then its constants.
#define CF_ENUM(type, name) type name; enum : type
#define CF_OPTIONS(type, name) type name; enum : type

// Objective-C's own YES and NO are the boolean literals, so that @YES boxes a boolean.
// developer.apple.com/documentation/objectivec/yes
#undef YES
#undef NO
#define YES __objc_yes
#define NO __objc_no

extern "C" {

// ---- CoreFoundation -----------------------------------------------------------------------
// developer.apple.com/documentation/corefoundation/cftyperef
typedef const void* CFTypeRef;
// developer.apple.com/documentation/corefoundation/cfindex
typedef long CFIndex;
// developer.apple.com/documentation/corefoundation/cftypeid
typedef unsigned long CFTypeID;
// developer.apple.com/documentation/corefoundation/boolean
typedef unsigned char Boolean;
// developer.apple.com/documentation/corefoundation/cfallocator
typedef const struct CF_BRIDGED_TYPE(id) __CFAllocator* CFAllocatorRef;
// developer.apple.com/documentation/corefoundation/cfstring
typedef const struct CF_BRIDGED_TYPE(NSString) __CFString* CFStringRef;
// developer.apple.com/documentation/corefoundation/cfarray
typedef const struct CF_BRIDGED_TYPE(NSArray) __CFArray* CFArrayRef;
// developer.apple.com/documentation/corefoundation/cfdictionary
typedef const struct CF_BRIDGED_TYPE(NSDictionary) __CFDictionary* CFDictionaryRef;
// developer.apple.com/documentation/corefoundation/cfdata
typedef const struct CF_BRIDGED_TYPE(NSData) __CFData* CFDataRef;
// developer.apple.com/documentation/corefoundation/cfboolean
typedef const struct CF_BRIDGED_TYPE(NSNumber) __CFBoolean* CFBooleanRef;

// developer.apple.com/documentation/corefoundation/1521269-cfretain
CFTypeRef CFRetain(CFTypeRef cf);
// developer.apple.com/documentation/corefoundation/1521153-cfrelease
void CFRelease(CFTypeRef cf);
// developer.apple.com/documentation/corefoundation/1521218-cfgettypeid
CFTypeID CFGetTypeID(CFTypeRef cf);
// developer.apple.com/documentation/corefoundation/1388741-cfarraygettypeid
CFTypeID CFArrayGetTypeID(void);
// developer.apple.com/documentation/corefoundation/1388772-cfarraygetcount
CFIndex CFArrayGetCount(CFArrayRef theArray);
// developer.apple.com/documentation/corefoundation/1388767-cfarraygetvalueatindex
const void* CFArrayGetValueAtIndex(CFArrayRef theArray, CFIndex idx);
// developer.apple.com/documentation/corefoundation/1542359-cfdatacreate
CFDataRef CFDataCreate(CFAllocatorRef allocator, const uint8_t* bytes, CFIndex length);
// developer.apple.com/documentation/corefoundation/1541672-cfbooleangettypeid
CFTypeID CFBooleanGetTypeID(void);
// developer.apple.com/documentation/corefoundation/1542942-cfstr
#define CFSTR(cStr) ((CFStringRef)__builtin___CFStringMakeConstantString("" cStr ""))

}  // extern "C"

// developer.apple.com/documentation/foundation/1587932-cfbridgingrelease
NS_INLINE id CFBridgingRelease(CFTypeRef CF_CONSUMED X) {
    return (__bridge_transfer id)X;
}
// developer.apple.com/documentation/foundation/1587930-cfbridgingretain
NS_INLINE CFTypeRef CFBridgingRetain(id X) CF_RETURNS_RETAINED {
    return (__bridge_retained CFTypeRef)X;
}

// ---- Dispatch -----------------------------------------------------------------------------
// Under ARC, dispatch objects are Objective-C objects (OS_OBJECT_USE_OBJC).
// developer.apple.com/documentation/dispatch/dispatch_object_t
@protocol OS_dispatch_object <NSObject>
@end
// developer.apple.com/documentation/dispatch/dispatch_queue_t
@protocol OS_dispatch_queue <OS_dispatch_object>
@end
typedef NSObject<OS_dispatch_queue>* dispatch_queue_t;
// developer.apple.com/documentation/dispatch/dispatch_queue_global_t
@protocol OS_dispatch_queue_global <OS_dispatch_queue>
@end
typedef NSObject<OS_dispatch_queue_global>* dispatch_queue_global_t;
// developer.apple.com/documentation/dispatch/dispatch_queue_main_t
@protocol OS_dispatch_queue_main <OS_dispatch_queue>
@end
typedef NSObject<OS_dispatch_queue_main>* dispatch_queue_main_t;
// developer.apple.com/documentation/dispatch/dispatch_group_t
@protocol OS_dispatch_group <OS_dispatch_object>
@end
typedef NSObject<OS_dispatch_group>* dispatch_group_t;
// developer.apple.com/documentation/dispatch/dispatch_semaphore_t
@protocol OS_dispatch_semaphore <OS_dispatch_object>
@end
typedef NSObject<OS_dispatch_semaphore>* dispatch_semaphore_t;
// developer.apple.com/documentation/dispatch/dispatch_block_t
typedef void (^dispatch_block_t)(void);
// developer.apple.com/documentation/dispatch/dispatch_time_t
typedef uint64_t dispatch_time_t;
// developer.apple.com/documentation/dispatch/dispatch_time_forever
#define DISPATCH_TIME_FOREVER (~0ull)
// developer.apple.com/documentation/dispatch/dispatch_time_now
#define DISPATCH_TIME_NOW (0ull)
// developer.apple.com/documentation/dispatch/dispatch_qos_class_t (qos_class_t, sys/qos.h)
typedef unsigned int qos_class_t;
#define QOS_CLASS_USER_INITIATED 0x19u
#define QOS_CLASS_UTILITY 0x11u

extern "C" {
// developer.apple.com/documentation/dispatch/1452927-dispatch_get_global_queue
dispatch_queue_global_t dispatch_get_global_queue(intptr_t identifier, uintptr_t flags);
// developer.apple.com/documentation/dispatch/1452921-dispatch_get_main_queue
dispatch_queue_main_t dispatch_get_main_queue(void);
// developer.apple.com/documentation/dispatch/1420519-dispatch_time
dispatch_time_t dispatch_time(dispatch_time_t when, int64_t delta);
// developer.apple.com/documentation/dispatch/1452876-dispatch_after
void dispatch_after(dispatch_time_t when, dispatch_queue_t queue, dispatch_block_t block);
// developer.apple.com/documentation/dispatch/1452955-dispatch_semaphore_create
dispatch_semaphore_t dispatch_semaphore_create(intptr_t value) NS_RETURNS_RETAINED;
// developer.apple.com/documentation/dispatch/1452919-dispatch_semaphore_signal
intptr_t dispatch_semaphore_signal(dispatch_semaphore_t dsema);
// developer.apple.com/documentation/dispatch/1453087-dispatch_semaphore_wait
intptr_t dispatch_semaphore_wait(dispatch_semaphore_t dsema, dispatch_time_t timeout);
// developer.apple.com/documentation/dispatch/1452850-dispatch_group_create
dispatch_group_t dispatch_group_create(void) NS_RETURNS_RETAINED;
// developer.apple.com/documentation/dispatch/1453084-dispatch_group_async
void dispatch_group_async(dispatch_group_t group, dispatch_queue_t queue, dispatch_block_t block);
// developer.apple.com/documentation/dispatch/1452794-dispatch_group_wait
intptr_t dispatch_group_wait(dispatch_group_t group, dispatch_time_t timeout);
}  // extern "C"

// ---- Foundation classes ------------------------------------------------------------------
@interface NSTask (ZdSdk)
// developer.apple.com/documentation/foundation/nstask/executableurl
@property(nullable, copy) NSURL* executableURL;
// developer.apple.com/documentation/foundation/nstask/launchandreturnerror(_:)
- (BOOL)launchAndReturnError:(out NSError** _Nullable)error;
@end

@interface NSFileManager (ZdSdk)
// developer.apple.com/documentation/foundation/filemanager/urls(for:in:)
- (NSArray<NSURL*>*)URLsForDirectory:(NSSearchPathDirectory)directory
                           inDomains:(NSSearchPathDomainMask)domainMask;
@end

@interface NSUserDefaults (ZdSdk)
// developer.apple.com/documentation/foundation/userdefaults/init(suitename:)
- (nullable instancetype)initWithSuiteName:(nullable NSString*)suitename;
@end
