#pragma once
// What the floating progress panel shows and where it stands, as plain functions over values,
// shared by the application's panel and the command line's progress line.

#include <string>

#include "model/Geometry.h"
#include "ui/CaptureProgressModel.h"

namespace zd::ProgressPanelRules {

// The panel's size in points.
inline constexpr Size panelSize{540, 64};

// The stage while the run has one (a single blank counts), else the status message.
const std::string& headline(const CaptureProgressModel& model);

// How much of the bar is filled, 0…1: 0 without a total, full (never more) past it.
double progressFraction(int value, int total);

// The countdown dial's arm in degrees, clockwise from 12 o'clock: one turn per second of the
// wall clock, at 9 o'clock on each whole second. `seconds` is any wall-clock reading; only its
// fraction counts, with the sign of the reading.
double countdownSweepDegrees(double seconds);

// The panel's top-left origin on a screen whose frame is `screenFrame`: centred across, its
// lower edge at 22 % of the full frame's height. `framesFromBottomLeft` tells whether the
// frame counts y upward (then the origin returned is the lower-left one, in the same terms).
Point panelOrigin(const Rect& screenFrame, bool framesFromBottomLeft);

}  // namespace zd::ProgressPanelRules
