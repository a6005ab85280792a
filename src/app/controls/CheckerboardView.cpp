#include "controls/CheckerboardView.h"

#include <cmath>

namespace zd::app {

void paintCheckerboard(QPainter& painter, const QRectF& area, double squareSize) {
    if (!(squareSize > 0))
        return;
    const QColor even = QColor::fromRgbF(0.92f, 0.92f, 0.92f);
    const QColor odd = QColor::fromRgbF(0.78f, 0.78f, 0.78f);
    const int columns = static_cast<int>(std::ceil(area.width() / squareSize));
    const int rows = static_cast<int>(std::ceil(area.height() / squareSize));
    painter.save();
    painter.setClipRect(area, Qt::IntersectClip);
    for (int i = 0; i < columns; ++i) {
        for (int j = 0; j < rows; ++j) {
            painter.fillRect(QRectF(area.x() + i * squareSize, area.y() + j * squareSize,
                                    squareSize, squareSize),
                             (i + j) % 2 == 0 ? even : odd);
        }
    }
    painter.restore();
}

}  // namespace zd::app
