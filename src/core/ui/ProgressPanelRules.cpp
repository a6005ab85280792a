#include "ui/ProgressPanelRules.h"

#include <algorithm>
#include <cmath>

namespace zd::ProgressPanelRules {

const std::string& headline(const CaptureProgressModel& model) {
    return model.captureStage().empty() ? model.statusMessage() : model.captureStage();
}

double progressFraction(int value, int total) {
    if (total < 1)
        return 0.0;
    return static_cast<double>(std::min(value, total)) / total;
}

double countdownSweepDegrees(double seconds) {
    const double fraction = seconds - std::trunc(seconds);
    return fraction * 360.0 - 90.0;
}

Point panelOrigin(const Rect& screenFrame, bool framesFromBottomLeft) {
    const double x = screenFrame.midX() - panelSize.width / 2;
    const double lift = 0.22 * screenFrame.height;  // from the screen's lower edge
    if (framesFromBottomLeft)
        return {x, screenFrame.minY() + lift};
    return {x, screenFrame.maxY() - lift - panelSize.height};
}

}  // namespace zd::ProgressPanelRules
