// The SDK's version macros: this program's oldest system (13.0) and the newest one it knows.
// developer.apple.com/library/archive/technotes/tn2064 (AvailabilityMacros.h)
#pragma once
#define MAC_OS_X_VERSION_10_15 101500
#define MAC_OS_VERSION_13_0 130000
#define MAC_OS_VERSION_14_0 140000
#define MAC_OS_X_VERSION_MIN_REQUIRED MAC_OS_VERSION_13_0
#define MAC_OS_X_VERSION_MAX_ALLOWED MAC_OS_VERSION_14_0
