#include "controls/LanguageChip.h"

#include <QPainter>
#include <QPainterPath>

#include "controls/AppPalette.h"
#include "controls/SymbolPainter.h"

namespace zd::app {

namespace {
constexpr int kSymbol = 11;  // the remove symbol's point size, and its width
constexpr int kSpacing = 4;
}  // namespace

LanguageChip::LanguageChip(const QString& label, QWidget* parent) : QAbstractButton(parent) {
    setText(label);
    QFont font = this->font();
    font.setPixelSize(11);
    setFont(font);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(this, &QAbstractButton::clicked, this, [this] {
        if (onRemove)
            onRemove();
    });
}

QSize LanguageChip::sizeHint() const {
    const QFontMetrics metrics(font());
    return {8 + metrics.horizontalAdvance(text()) + kSpacing + kSymbol + 8,
            4 + std::max(metrics.height(), kSymbol) + 4};
}

void LanguageChip::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor secondary = secondaryColor(palette());
    QPainterPath capsule;
    capsule.addRoundedRect(QRectF(rect()), height() / 2.0, height() / 2.0);
    painter.fillPath(capsule, withOpacity(secondary, 0.15));
    painter.setPen(palette().color(QPalette::WindowText));
    const QRectF textArea(8, 0, width() - 16 - kSpacing - kSymbol, height());
    painter.drawText(textArea, Qt::AlignLeft | Qt::AlignVCenter, text());
    paintSymbol(painter, "xmark.circle.fill", kSymbol,
                QPointF(width() - 8 - kSymbol / 2.0, height() / 2.0), secondary);
}

}  // namespace zd::app
