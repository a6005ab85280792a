#include "NamedSymbol.h"

#include "ImageConversion.h"
#include "SymbolArtwork.h"

namespace zd {

std::optional<NamedSymbol> NamedSymbol::find(std::string_view name, double pointSize,
                                             const SystemLookup& system) {
    if (auto own = system(name, pointSize); own && !own->picture.isNull()) {
        return NamedSymbol{QSizeF(own->size.width, own->size.height), toQImage(own->picture),
                           QPainterPath()};
    }
    const auto size = SymbolArtwork::naturalSize(name, pointSize);
    const auto shape = SymbolArtwork::shape(name, pointSize);
    if (!size || !shape)
        return std::nullopt;
    return NamedSymbol{*size, QImage(), *shape};
}

void NamedSymbol::paint(QPainter& painter, QPointF topLeft, const QColor& color) const {
    if (coverage.isNull()) {
        painter.fillPath(shape.translated(topLeft), color);
        return;
    }
    // The picture's coverage in the plain colour: the colour kept only where the symbol is.
    QImage tinted = coverage.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    QPainter tint(&tinted);
    tint.setCompositionMode(QPainter::CompositionMode_SourceIn);
    tint.fillRect(tinted.rect(), color);
    tint.end();
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(QRectF(topLeft, size), tinted);
    painter.restore();
}

}  // namespace zd
