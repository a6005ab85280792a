// The progress panel's rules: headline, bar fraction, dial sweep, and where the panel stands.
#include "ui/ProgressPanelRules.h"

#include <gtest/gtest.h>

namespace zd {
namespace {

using namespace ProgressPanelRules;

TEST(ProgressPanelRules, HeadlineIsTheStageElseTheStatus) {
    CaptureProgressModel model;
    model.setStatusMessage("Done.");
    EXPECT_EQ(headline(model), "Done.");
    model.setCaptureStage(" ");  // a blank stage is still a stage
    EXPECT_EQ(headline(model), " ");
}

TEST(ProgressPanelRules, FractionIsZeroWithoutATotalAndNeverOverflows) {
    const struct {
        int value, total;
        double expected;
    } cases[] = {{3, 0, 0.0}, {1, -2, 0.0}, {0, 4, 0.0}, {1, 4, 0.25}, {4, 4, 1.0}, {5, 4, 1.0}};
    for (const auto& c : cases)
        EXPECT_DOUBLE_EQ(progressFraction(c.value, c.total), c.expected)
            << c.value << "/" << c.total;
}

TEST(ProgressPanelRules, SweepTurnsOncePerSecondFromNineOClock) {
    const struct {
        double seconds, degrees;
    } cases[] = {{100.0, -90}, {100.25, 0}, {100.5, 90}, {100.75, 180}, {-0.25, -180}};
    for (const auto& c : cases)
        EXPECT_DOUBLE_EQ(countdownSweepDegrees(c.seconds), c.degrees) << c.seconds;
}

TEST(ProgressPanelRules, PanelStandsCentredWithItsLowerEdgeAtAFifthOfTheHeight) {
    // y downward (X11): 900 − 198 − 64 = 638; y upward: the lower edge itself.
    EXPECT_EQ(panelOrigin({0, 0, 1440, 900}, false), (Point{450, 638}));
    EXPECT_EQ(panelOrigin({0, 0, 1440, 900}, true), (Point{450, 198}));
    EXPECT_EQ(panelOrigin({1920, 100, 1000, 500}, false), (Point{2150, 426}));
}

}  // namespace
}  // namespace zd
