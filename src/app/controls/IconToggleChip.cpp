#include "controls/IconToggleChip.h"

#include <QPainter>

#include "controls/AppPalette.h"
#include "controls/SymbolPainter.h"

namespace zd::app {

IconToggleChip::IconToggleChip(std::string symbol, const QString& label, QWidget* parent)
    : SelectableTile(Look{6, 0.15, 0.08, 1.0, 0.5}, parent), symbol_(std::move(symbol)) {
    setToolTip(label);
    setFixedSize(30, 24);
    onTap = [this] {
        setOn(!isOn());
        if (onChange)
            onChange(isOn());
    };
}

void IconToggleChip::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    paintTile(painter);
    paintSymbol(painter, symbol_, 13, QRectF(rect()).center(),
                isOn() ? accentColor(palette()) : withOpacity(secondaryColor(palette()), 0.6));
}

}  // namespace zd::app
