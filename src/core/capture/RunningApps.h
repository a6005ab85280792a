#pragma once
// The single-window targets: every ordinary window of another regular application that is
// large enough to be worth a screenshot, sorted by application and title.

#include <string_view>
#include <vector>

#include "model/CaptureTarget.h"

namespace zd {

struct Environment;

namespace RunningApps {

// Reads the window list (desktop elements excluded) and the running applications. Never
// fails: an unreadable answer gives an empty list.
std::vector<CaptureTarget> currentTargets(const Environment& env);

// Case-insensitive order of names: negative, zero or positive like strcmp. Letters are
// compared without case (ASCII and Latin-1 supplement folded), other characters by code point.
int compareCaseInsensitive(std::string_view a, std::string_view b);

}  // namespace RunningApps
}  // namespace zd
