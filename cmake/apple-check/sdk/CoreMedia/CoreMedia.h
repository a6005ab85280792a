// Stands in for the framework header of the same name; see ZdAppleSdk.h.
#pragma once
#include "ZdAppleSdk.h"
