#pragma once
// A named symbol as the canvas and the window draw it: the platform's own (SystemSymbols)
// where the platform has the name, our own artwork (SymbolArtwork) otherwise, and nothing for
// a name both lack (the platform's logo on Linux), which is then not drawn.

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QSizeF>

#include <functional>
#include <optional>
#include <string_view>

#include "SystemSymbols.h"

namespace zd {

struct NamedSymbol {
    using SystemLookup =
        std::function<std::optional<SystemSymbols::Symbol>(std::string_view, double)>;

    // The symbol `name` at `pointSize`, asking `system` first.
    static std::optional<NamedSymbol> find(std::string_view name, double pointSize,
                                           const SystemLookup& system = SystemSymbols::symbol);

    // Paints it at its natural size in the plain colour `color` (its shape only), the box's
    // top-left corner at `topLeft`.
    void paint(QPainter& painter, QPointF topLeft, const QColor& color) const;

    QSizeF size;         // natural size, in pixels
    QImage coverage;     // the platform's picture, of which only the alpha counts; or null
    QPainterPath shape;  // our artwork, filling (0, 0) – size with y downward; or empty
};

}  // namespace zd
