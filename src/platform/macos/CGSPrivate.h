#pragma once
// The private desktop calls of the window server (SkyLight, reached through CoreGraphics), as
// function types only: they have no public header, so no call is linked against; CGSFacade
// looks each one up at run time. Included by CGSFacade.mm alone.

#include <CoreFoundation/CoreFoundation.h>

#include <cstdint>

extern "C" {

using CGSConnectionID = int;
using CGSSpaceID = std::uint64_t;

// The program's connection to the window server.
using CGSMainConnectionIDFunction = CGSConnectionID();
// The id of the desktop shown now.
using CGSGetActiveSpaceFunction = CGSSpaceID(CGSConnectionID connection);
// One dictionary per display ("Display Identifier", "Current Space", "Spaces"); the caller
// releases the array.
using CGSCopyManagedDisplaySpacesFunction = CFArrayRef(CGSConnectionID connection);
// The desktop ids of the windows (numbers) for the kinds in `mask`; the caller releases it.
using CGSCopySpacesForWindowsFunction = CFArrayRef(CGSConnectionID connection, int mask,
                                                   CFArrayRef windows);
}
