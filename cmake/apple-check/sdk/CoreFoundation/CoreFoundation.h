// Stands in for the framework header of the same name; see ZdFoundationSdk.h.
#pragma once
#include <Foundation/Foundation.h>
#include "ZdFoundationSdk.h"
