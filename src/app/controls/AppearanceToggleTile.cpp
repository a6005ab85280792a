#include "controls/AppearanceToggleTile.h"

#include <QPainter>

#include "controls/AppPalette.h"
#include "controls/SymbolPainter.h"

namespace zd::app {

AppearanceToggleTile::AppearanceToggleTile(AppearanceMode mode, QWidget* parent)
    : SelectableTile(Look{8, 0.15, 0.08, 1.5, 1.0}, parent), mode_(mode) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void AppearanceToggleTile::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    paintTile(painter);
    const QColor secondary = secondaryColor(palette());
    const bool light = mode_ == AppearanceMode::light;

    const QRectF swatch(12, (height() - 24) / 2.0, 32, 24);
    const double grey = light ? 0.97 : 0.12;
    painter.setBrush(QColor::fromRgbF(static_cast<float>(grey), static_cast<float>(grey),
                                      static_cast<float>(grey)));
    painter.setPen(QPen(withOpacity(secondary, 0.3), 1.0));
    painter.drawRoundedRect(swatch.adjusted(0.5, 0.5, -0.5, -0.5), 5.5, 5.5);
    paintSymbol(painter, light ? "sun.max.fill" : "moon.fill", 13, swatch.center(),
                light ? QColor(255, 149, 0) : QColor(Qt::white));

    QFont font = painter.font();
    font.setPixelSize(12);
    font.setWeight(QFont::DemiBold);
    painter.setFont(font);
    painter.setPen(palette().color(QPalette::WindowText));
    const QRectF text(swatch.right() + 10, 0, width() - swatch.right() - 10 - 12 - 14 - 10,
                      height());
    const auto word = title(mode_);
    painter.drawText(text, Qt::AlignLeft | Qt::AlignVCenter,
                     QString::fromUtf8(word.data(), static_cast<qsizetype>(word.size())));

    const QPointF mark(width() - 12 - 7, height() / 2.0);
    if (isOn())
        paintSymbol(painter, "checkmark.circle.fill", 14, mark, accentColor(palette()));
    else
        paintSymbol(painter, "circle", 14, mark, withOpacity(secondary, 0.5));
}

}  // namespace zd::app
