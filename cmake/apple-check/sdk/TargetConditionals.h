// The SDK's platform conditions for an Intel or Apple-silicon Mac.
// developer.apple.com/documentation/xcode/identifying-the-target-platform (TargetConditionals.h)
#pragma once
#define TARGET_OS_MAC 1
#define TARGET_OS_OSX 1
#define TARGET_OS_IPHONE 0
#define TARGET_OS_IOS 0
#define TARGET_OS_TV 0
#define TARGET_OS_WATCH 0
#define TARGET_OS_SIMULATOR 0
#define TARGET_OS_MACCATALYST 0
