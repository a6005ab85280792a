#include "controls/ElidedLabel.h"

#include <QPainter>

namespace zd::app {

ElidedLabel::ElidedLabel(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void ElidedLabel::setText(const QString& text) {
    if (text == text_)
        return;
    text_ = text;
    updateGeometry();
    update();
}

QString ElidedLabel::shownText() const {
    return fontMetrics().elidedText(text_, Qt::ElideRight, width());
}

QSize ElidedLabel::sizeHint() const {
    return {fontMetrics().horizontalAdvance(text_), fontMetrics().height()};
}

QSize ElidedLabel::minimumSizeHint() const {
    return {0, fontMetrics().height()};
}

void ElidedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter, shownText());
}

}  // namespace zd::app
