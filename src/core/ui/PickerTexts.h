#pragma once
// The texts of the main window's pickers, which the command line shows as well: a target as
// the source picker lists it, and a desktop as the Space picker does.

#include <string>

#include "model/CaptureTarget.h"
#include "model/SpacesInfo.h"

namespace zd {

// appName, then " — " and the title when there is one; 71 characters or more are cut to 69
// and "…".
std::string targetText(const CaptureTarget& target);
// "Desktop N", with " (current)" for the current one.
std::string spaceText(const Spaces::Info& space);

}  // namespace zd
