#include "window/FlowLayout.h"

#include <QWidget>
#include <algorithm>

namespace zd::app {

FlowLayout::FlowLayout(int minColumn, int spacing, QWidget* parent)
    : QLayout(parent), minColumn_(minColumn), gap_(spacing) {
    setContentsMargins(0, 0, 0, 0);
}

FlowLayout::~FlowLayout() {
    while (QLayoutItem* item = takeAt(0))
        delete item;
}

QLayoutItem* FlowLayout::takeAt(int index) {
    return index >= 0 && index < items_.size() ? items_.takeAt(index) : nullptr;
}

QSize FlowLayout::minimumSize() const {
    int height = 0;
    for (QLayoutItem* item : items_)
        height = std::max(height, item->sizeHint().height());
    return {minColumn_, height};
}

void FlowLayout::setGeometry(const QRect& rect) {
    QLayout::setGeometry(rect);
    arrange(rect, true);
}

int FlowLayout::arrange(const QRect& rect, bool place) const {
    if (items_.isEmpty())
        return 0;
    const int columns = std::max(1, (rect.width() + gap_) / (minColumn_ + gap_));
    const int columnWidth = std::max(1, (rect.width() - gap_ * (columns - 1)) / columns);
    int y = rect.y();
    int rowHeight = 0;
    for (int index = 0; index < items_.size(); ++index) {
        const int column = index % columns;
        if (column == 0 && index > 0) {
            y += rowHeight + gap_;
            rowHeight = 0;
        }
        QLayoutItem* item = items_[index];
        const int height = item->hasHeightForWidth() ? item->heightForWidth(columnWidth)
                                                     : item->sizeHint().height();
        if (place)
            item->setGeometry(
                QRect(rect.x() + column * (columnWidth + gap_), y, columnWidth, height));
        rowHeight = std::max(rowHeight, height);
    }
    return y + rowHeight - rect.y();
}

}  // namespace zd::app
