#include "panel/NewsreelCountdown.h"

#include <QDateTime>
#include <QPainter>

#include <algorithm>

#include "ui/ProgressPanelRules.h"

namespace zd::app {

NewsreelCountdown::NewsreelCountdown(QWidget* parent, std::function<double()> wallClock)
    : QWidget(parent), wallClock_(std::move(wallClock)) {
    if (!wallClock_) {
        wallClock_ = [] { return static_cast<double>(QDateTime::currentMSecsSinceEpoch()) / 1000; };
    }
    frames_.setTimerType(Qt::PreciseTimer);
    frames_.setInterval(16);  // about one frame of a 60 Hz display
    connect(&frames_, &QTimer::timeout, this, qOverload<>(&QWidget::update));
}

void NewsreelCountdown::setValue(int seconds) {
    if (seconds == value_)
        return;
    value_ = seconds;
    update();
}

void NewsreelCountdown::showEvent(QShowEvent*) {
    frames_.start();
}

void NewsreelCountdown::hideEvent(QHideEvent*) {
    frames_.stop();
}

void NewsreelCountdown::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double w = width();
    const double h = height();
    const QPointF centre(w / 2, h / 2);
    const double r = std::min(w, h) / 2;
    const QColor hairline(255, 255, 255, 89);

    // The ring fills the frame; its stroke stays inside it.
    painter.setPen(QPen(QColor(255, 255, 255, 153), 1.5));
    painter.drawEllipse(centre, r - 0.75, r - 0.75);
    painter.fillRect(QRectF(centre.x() - 0.5, 0, 1.0, h), hairline);
    painter.fillRect(QRectF(0, centre.y() - 0.5, w, 1.0), hairline);

    painter.save();
    painter.translate(centre);
    painter.rotate(ProgressPanelRules::countdownSweepDegrees(wallClock_()));
    painter.setPen(QPen(Qt::white, 1.5));
    painter.drawLine(QPointF(0, 0), QPointF(0, -r));
    painter.restore();

    QFont font = painter.font();
    font.setPixelSize(18);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(rect(), Qt::AlignCenter, QString::number(value_));
}

}  // namespace zd::app
