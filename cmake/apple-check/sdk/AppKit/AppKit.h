// GNUstep's AppKit, then what it lacks of the macOS SDK (ZdAppleSdk.h).
#pragma once
#include_next <AppKit/AppKit.h>
#include "ZdAppleSdk.h"
