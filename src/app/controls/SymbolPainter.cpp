#include "controls/SymbolPainter.h"

#include "SymbolArtwork.h"

namespace zd::app {

void paintSymbol(QPainter& painter, std::string_view name, double pointSize, QPointF centre,
                 const QColor& color) {
    const auto size = SymbolArtwork::naturalSize(name, pointSize);
    const auto shape = SymbolArtwork::shape(name, pointSize);
    if (!size || !shape)
        return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(centre.x() - size->width() / 2, centre.y() - size->height() / 2);
    painter.fillPath(*shape, color);
    painter.restore();
}

}  // namespace zd::app
