// The floating progress panel: what it shows for each state of the run, the bar's fill by its
// pixels, Stop, and where and when it comes up.
#include "panel/ProgressPanel.h"

#include <gtest/gtest.h>

#include <QPushButton>
#include <QTest>

#include "AppTestSupport.h"
#include "controls/ElidedLabel.h"
#include "panel/BusySpinner.h"
#include "panel/CaptureProgressView.h"
#include "panel/ManualProgressBar.h"
#include "panel/NewsreelCountdown.h"

namespace zd::app {
namespace {

struct ProgressPanelTest : testing::AppTest {
    void SetUp() override { model.setStatusMessage("Ready."); }
    void set(const std::string& stage, int countdown, int completed, int total) {
        model.setCaptureStage(stage);
        model.setCountdownRemaining(countdown);
        model.setShotsCompleted(completed);
        model.setShotsTotal(total);
    }
    CaptureProgressView& view() { return *panel.view(); }

    CaptureProgressModel model;
    std::optional<Rect> screen = Rect{0, 0, 1440, 900};
    ProgressPanel panel{nullptr, [this] { return screen; }};
};

TEST_F(ProgressPanelTest, ShowsDialOrSpinnerHeadlineAndCountForEachState) {
    const struct {
        std::string stage;
        int countdown, completed, total;
        bool dial;
        const char* headline;
        const char* count;  // none when the bar is hidden
    } cases[] = {
        {"", 0, 0, 0, false, "Ready.", nullptr},  // no total: the headline alone
        {" ", 1, 0, 4, true, " ", "0/4"},         // one second left still shows the dial
        {"Capturing", 0, 5, 4, false, "Capturing", "5/4"},
    };
    panel.setModel(&model);
    panel.present();
    for (const auto& c : cases) {
        set(c.stage, c.countdown, c.completed, c.total);
        EXPECT_EQ(view().countdown()->isVisible(), c.dial) << c.stage;
        EXPECT_EQ(view().spinner()->isVisible(), !c.dial) << c.stage;
        EXPECT_EQ(view().headline()->text().toStdString(), c.headline);
        EXPECT_EQ(view().count()->isVisible(), c.count != nullptr) << c.stage;
        if (c.count) {
            EXPECT_EQ(view().count()->text().toStdString(), c.count);
        }
    }
    EXPECT_EQ(view().countdown()->animating(), false);  // no frames while the dial is hidden
    set("Posing", 3, 0, 4);
    EXPECT_TRUE(view().countdown()->animating());
    EXPECT_EQ(view().countdown()->value(), 3);
}

TEST_F(ProgressPanelTest, LongHeadlineStaysOnOneLineAndEndsInAnEllipsis) {
    panel.setModel(&model);
    set(std::string(40, 'x') + " relaunching the target in Portuguese (Brazil) and waiting", 0, 1,
        4);
    panel.present();
    const QString shown = view().headline()->shownText();
    EXPECT_TRUE(shown.endsWith(QChar(0x2026))) << shown.toStdString();
    EXPECT_EQ(panel.size(), QSize(540, 64));
    EXPECT_LE(view().headline()->height(), view().headline()->fontMetrics().height() + 1);
}

TEST_F(ProgressPanelTest, BarFillsItsShareOfTheWidthByPixels) {
    panel.setModel(&model);
    for (const auto& [completed, total, fraction] :
         std::vector<std::tuple<int, int, double>>{{1, 4, 0.25}, {3, 4, 0.75}, {5, 4, 1.0}}) {
        panel.hide();  // a new value shows at once where no one sees it move
        set("Capturing", 0, completed, total);
        panel.present();
        const QImage image = testing::grabbed(panel);
        const QRect bar(view().bar()->mapTo(&panel, QPoint(0, 0)), view().bar()->size());
        int white = 0;
        for (int x = bar.left(); x <= bar.right(); ++x)
            white += testing::brightness(image.pixel(x, bar.center().y())) > 200 ? 1 : 0;
        EXPECT_NEAR(white, fraction * bar.width(), 2.0) << completed << "/" << total;
    }
    // A change while shown moves there over a fraction of a second.
    set("Capturing", 0, 2, 4);
    EXPECT_GT(view().bar()->shownFraction(), 0.5);
    EXPECT_TRUE(QTest::qWaitFor([&] { return view().bar()->shownFraction() == 0.5; }, 2000));
}

TEST_F(ProgressPanelTest, StopCallsOnCancelAndNeverTakesTheFocus) {
    int cancels = 0;
    panel.setModel(&model);
    panel.present();
    QTest::mouseClick(view().stopButton(), Qt::LeftButton);  // no onCancel: nothing happens
    model.onCancel = [&] { ++cancels; };
    QTest::mouseClick(view().stopButton(), Qt::LeftButton);
    EXPECT_EQ(cancels, 1);
    EXPECT_EQ(view().stopButton()->focusPolicy(), Qt::NoFocus);
    EXPECT_TRUE(panel.testAttribute(Qt::WA_ShowWithoutActivating));
    EXPECT_FALSE(panel.testAttribute(Qt::WA_QuitOnClose));
}

TEST_F(ProgressPanelTest, ComesUpAtTheCoresOriginOfTheScreenAtEachShow) {
    panel.setWorking(true);
    EXPECT_FALSE(panel.isVisible());  // no model yet
    panel.setModel(&model);
    panel.setWorking(true);
    EXPECT_TRUE(panel.isVisible());
    EXPECT_EQ(panel.pos(), QPoint(450, 638));
    screen = Rect{0, 0, 1920, 1080};  // another screen: the next show follows it
    panel.setWorking(true);
    EXPECT_EQ(panel.pos(), QPoint(690, 778));
    panel.setWorking(false);
    EXPECT_FALSE(panel.isVisible());
    screen.reset();  // no screen: no panel, and the run goes on
    panel.setWorking(true);
    EXPECT_FALSE(panel.isVisible());
}

}  // namespace
}  // namespace zd::app
