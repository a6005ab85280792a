// The countdown dial's arm, read from its pixels at four moments of a second.
#include "panel/NewsreelCountdown.h"

#include <gtest/gtest.h>

#include <QPainter>

#include "AppTestSupport.h"

namespace zd::app {
namespace {

TEST(NewsreelCountdown, ArmPointsByTheFractionOfTheWallClocksSecond) {
    testing::ensureApp();
    double now = 0;
    NewsreelCountdown dial(nullptr, [&] { return now; });
    dial.resize(40, 40);
    dial.setValue(3);
    const QPoint centre(20, 20);
    // Up, right, down, left, 15 points out: past the digit, inside the ring.
    const QPoint directions[] = {{0, -15}, {15, 0}, {0, 15}, {-15, 0}};
    const struct {
        double seconds;
        int direction;
    } cases[] = {{1700000000.0, 3}, {1700000000.25, 0}, {1700000000.5, 1}, {1700000000.75, 2}};
    for (const auto& c : cases) {
        now = c.seconds;
        QImage image(40, 40, QImage::Format_ARGB32);
        image.fill(Qt::black);
        dial.render(&image, {}, {}, QWidget::DrawChildren);  // on black, not the palette's
        for (int d = 0; d < 4; ++d) {
            const int value = testing::brightness(image.pixel(centre + directions[d]));
            // The arm is solid white; the hairlines beneath it are white at 35 %.
            if (d == c.direction) {
                EXPECT_GT(value, 200) << c.seconds << " direction " << d;
            } else {
                EXPECT_LT(value, 140) << c.seconds << " direction " << d;
            }
        }
    }
}

}  // namespace
}  // namespace zd::app
