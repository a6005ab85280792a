#pragma once
// Draws the synthetic system menu bar over a composed picture: logo, application name and menu
// titles on the left, and the right cluster (clock, battery, status symbols, the user's own
// accessories). Every length is a constant times the canvas scale (canvas width / 1440), so the
// bar reads as the real one at any canvas size. The right cluster is also drawn alone over a
// captured bar whose own status items were painted out; for that the compositor needs its
// width beforehand, and width and drawing walk the same list of items so they agree exactly.

#include <string>
#include <string_view>
#include <vector>

#include "composition/Canvas.h"
#include "model/AppearanceMode.h"
#include "model/Geometry.h"
#include "model/MenuBarConfig.h"

namespace zd::MenuBarRenderer {

// Paints the whole bar into `bar` (canvas pixels).
void draw(Canvas& canvas, const Rect& bar, AppearanceMode mode, const MenuBarConfig& config,
          double canvasScale);

// Paints only the right cluster into `bar`: no fill, no hairline, no logo, no titles.
void drawRightCluster(Canvas& canvas, const Rect& bar, AppearanceMode mode,
                      const MenuBarConfig& config, double canvasScale);

// Distance from the bar's right edge to the left end of the cluster's last item, trailing
// advances included; exactly the cursor's travel in drawRightCluster. `canvas` only measures.
double rightClusterWidth(const Canvas& canvas, const MenuBarConfig& config, double canvasScale);

// The battery symbol for a charge level: 0 / 25 / 50 / 75 / 100 percent at limits 13, 38, 63, 88.
std::string_view batterySymbolName(int batteryPercent);

// Titles shown when the configuration has none.
const std::vector<std::string>& defaultMenuTitles();

}  // namespace zd::MenuBarRenderer
