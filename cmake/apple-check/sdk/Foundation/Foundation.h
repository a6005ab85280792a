// GNUstep's Foundation, then what it lacks of the macOS SDK (ZdFoundationSdk.h).
#pragma once
#include_next <Foundation/Foundation.h>
#include "ZdFoundationSdk.h"
