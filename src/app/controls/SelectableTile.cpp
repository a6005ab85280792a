#include "controls/SelectableTile.h"

#include <QPainter>
#include <QPainterPath>

#include "controls/AppPalette.h"

namespace zd::app {

SelectableTile::SelectableTile(Look look, QWidget* parent) : QAbstractButton(parent), look_(look) {
    setFocusPolicy(Qt::TabFocus);
    connect(this, &QAbstractButton::clicked, this, [this] {
        if (onTap)
            onTap();
    });
}

void SelectableTile::setSelected(bool selected) {
    if (selected == selected_)
        return;
    selected_ = selected;
    update();
}

void SelectableTile::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    paintTile(painter);
}

void SelectableTile::paintTile(QPainter& painter) const {
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor accent = accentColor(palette());
    QPainterPath shape;
    shape.addRoundedRect(QRectF(rect()), look_.radius, look_.radius);
    painter.fillPath(shape, selected_ ? withOpacity(accent, look_.fillOn)
                                      : withOpacity(secondaryColor(palette()), look_.fillOff));
    if (selected_) {
        // Inside the edge: the stroke's centre line is inset by half its width.
        const double inset = look_.borderWidth / 2;
        const QRectF inner = QRectF(rect()).adjusted(inset, inset, -inset, -inset);
        painter.setPen(QPen(withOpacity(accent, look_.borderOpacity), look_.borderWidth));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(inner, look_.radius - inset, look_.radius - inset);
    }
}

}  // namespace zd::app
