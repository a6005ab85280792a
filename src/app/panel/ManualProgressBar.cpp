#include "panel/ManualProgressBar.h"

#include <QPainter>
#include <QPainterPath>

#include "ui/ProgressPanelRules.h"

namespace zd::app {

ManualProgressBar::ManualProgressBar(QWidget* parent) : QWidget(parent) {
    setFixedHeight(4);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    animation_.setDuration(180);
    animation_.setEasingCurve(QEasingCurve::OutCubic);
    connect(&animation_, &QVariantAnimation::valueChanged, this, [this](const QVariant& v) {
        shown_ = v.toDouble();
        update();
    });
}

void ManualProgressBar::setProgress(int value, int total) {
    if (value == value_ && total == total_)
        return;  // the model announces writes of the value it holds too
    const bool valueChanged = value != value_;
    value_ = value;
    total_ = total;
    const double target = ProgressPanelRules::progressFraction(value, total);
    animation_.stop();
    // Only a change of the value moves in steps, and only where someone can see it.
    if (valueChanged && isVisible()) {
        animation_.setStartValue(shown_);
        animation_.setEndValue(target);
        animation_.start();
    } else {
        shown_ = target;
        update();
    }
}

void ManualProgressBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF track(rect());
    const double radius = std::min(3.0, track.height() / 2);
    QPainterPath trackPath;
    trackPath.addRoundedRect(track, radius, radius);
    painter.fillPath(trackPath, QColor(255, 255, 255, 51));
    if (shown_ <= 0)
        return;
    QPainterPath fill;
    fill.addRoundedRect(QRectF(track.x(), track.y(), track.width() * shown_, track.height()),
                        radius, radius);
    painter.fillPath(fill, Qt::white);
}

}  // namespace zd::app
