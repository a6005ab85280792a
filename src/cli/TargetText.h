#pragma once
// Finding the one target that a word given on the command line means. Targets and desktops
// are named by the pickers' texts.

#include <string>
#include <vector>

#include "model/CaptureTarget.h"
#include "model/Expected.h"
#include "model/SpacesInfo.h"
#include "ui/PickerTexts.h"

namespace zd::cli {

// The target a word means: a window number, else an application name or a window title (the
// whole of either, ignoring case), else a part of "name — title". The text says why none fits:
// nothing matches, or several do (they are listed).
Expected<CaptureTarget, std::string> resolveTarget(const std::vector<CaptureTarget>& targets,
                                                   const std::string& word);

}  // namespace zd::cli
