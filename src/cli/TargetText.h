#pragma once
// How the command line names targets and desktops: the texts of the window's source and desktop
// pickers, and finding the one target that a word given on the command line means.

#include <string>
#include <vector>

#include "model/CaptureTarget.h"
#include "model/Expected.h"
#include "model/SpacesInfo.h"

namespace zd::cli {

// appName, then " — " and the title when there is one; 71 characters or more are cut to 69
// and "…".
std::string targetText(const CaptureTarget& target);
// "Desktop N", with " (current)" for the current one.
std::string spaceText(const Spaces::Info& space);

// The target a word means: a window number, else an application name or a window title (the
// whole of either, ignoring case), else a part of "name — title". The text says why none fits:
// nothing matches, or several do (they are listed).
Expected<CaptureTarget, std::string> resolveTarget(const std::vector<CaptureTarget>& targets,
                                                   const std::string& word);

}  // namespace zd::cli
