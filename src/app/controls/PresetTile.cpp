#include "controls/PresetTile.h"

#include <QPainter>

#include <cmath>

#include "controls/AppPalette.h"

namespace zd::app {

PresetTile::PresetTile(WindowSizePreset preset, QWidget* parent)
    : QAbstractButton(parent), preset_(preset) {
    setToolTip(
        QString::fromUtf8(title(preset).data(), static_cast<qsizetype>(title(preset).size())) +
        QStringLiteral(" \u2014 ") +
        QString::fromUtf8(explanation(preset).data(),
                          static_cast<qsizetype>(explanation(preset).size())));
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    connect(this, &QAbstractButton::clicked, this, [this] {
        if (onTap)
            onTap();
    });
}

void PresetTile::setSelected(bool selected) {
    selected_ = selected;
    update();
}

QRectF PresetTile::glyphRect(WindowSizePreset preset, const QRectF& area) {
    double share = 1.0;  // of the screen's area
    switch (preset) {
        case WindowSizePreset::half:
            share = 0.5;
            break;
        case WindowSizePreset::threeQ:
            share = 0.75;
            break;
        case WindowSizePreset::full:
            share = 1.0;
            break;
        case WindowSizePreset::current:
            return {};
    }
    const QSizeF size(0.92 * std::sqrt(share) * area.width(),
                      0.9 * std::sqrt(share) * area.height());
    return QRectF(area.center() - QPointF(size.width() / 2, size.height() / 2), size);
}

void PresetTile::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor accent = accentColor(palette());
    const QColor secondary = secondaryColor(palette());
    // The outline in the proportions 1.6 : 1, as large as fits.
    QRectF frame(rect());
    if (frame.width() / frame.height() > 1.6)
        frame.setWidth(frame.height() * 1.6);
    else
        frame.setHeight(frame.width() / 1.6);
    frame.moveCenter(QRectF(rect()).center());
    const double line = selected_ ? 2.0 : 1.0;
    painter.setPen(QPen(selected_ ? accent : withOpacity(secondary, 0.4), line));
    painter.drawRoundedRect(frame.adjusted(line / 2, line / 2, -line / 2, -line / 2), 6 - line / 2,
                            6 - line / 2);

    const QRectF area = frame.adjusted(2, 2, -2, -2);
    if (preset_ == WindowSizePreset::current) {
        QFont font = painter.font();
        font.setPixelSize(10);
        font.setWeight(QFont::Medium);
        painter.setFont(font);
        painter.setPen(secondary);
        painter.drawText(area, Qt::AlignCenter, QStringLiteral("Current size\n& position"));
        return;
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(withOpacity(accent, 0.6));
    painter.drawRoundedRect(glyphRect(preset_, area), 3, 3);
}

}  // namespace zd::app
