#include "panel/BusySpinner.h"

#include <QPainter>

namespace zd::app {

namespace {
constexpr int kSteps = 12;  // per turn
constexpr double kDiameter = 16.0;
}  // namespace

BusySpinner::BusySpinner(QWidget* parent) : QWidget(parent) {
    frames_.setInterval(1000 / kSteps);
    connect(&frames_, &QTimer::timeout, this, [this] {
        step_ = (step_ + 1) % kSteps;
        update();
    });
}

void BusySpinner::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF ring(width() / 2.0 - kDiameter / 2, height() / 2.0 - kDiameter / 2, kDiameter,
                      kDiameter);
    painter.setPen(QPen(QColor(255, 255, 255, 64), 2.0));
    painter.drawEllipse(ring.adjusted(1, 1, -1, -1));
    QPen arc(Qt::white, 2.0);
    arc.setCapStyle(Qt::RoundCap);
    painter.setPen(arc);
    // Qt's angles are in sixteenths of a degree, counter-clockwise from 3 o'clock.
    const int start = 90 * 16 - step_ * (360 * 16 / kSteps);
    painter.drawArc(ring.adjusted(1, 1, -1, -1), start, -100 * 16);
}

}  // namespace zd::app
