#pragma once
// Draws one of our symbols (the artwork shared with the menu bar) into a widget: centred on a
// point, at a point size, in one colour. Vector shapes, so they are crisp at any density.

#include <QColor>
#include <QPainter>
#include <QPointF>

#include <string_view>

namespace zd::app {

// Draws nothing for an unknown name.
void paintSymbol(QPainter& painter, std::string_view name, double pointSize, QPointF centre,
                 const QColor& color);

}  // namespace zd::app
