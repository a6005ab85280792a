#include "window/CompositeWindowsPopover.h"

#include <QAbstractItemModel>
#include <QGraphicsOpacityEffect>
#include <QLabel>
#include <QListWidget>
#include <QVBoxLayout>

#include "ui/WindowTexts.h"
#include "window/SectionStyle.h"

namespace zd::app {

namespace {
constexpr int idRole = Qt::UserRole + 1;
}

CompositeWindowsPopover::CompositeWindowsPopover(ContentView& view, QWidget* parent)
    : QFrame(parent, Qt::Popup),
      view_(view),
      empty_(new QLabel("No windows visible.")),
      helper_(new QLabel("Top = front-most. Drag the handles to restack.")),
      list_(new QListWidget) {
    setFrameShape(QFrame::StyledPanel);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(12, 8, 12, 8);
    empty_->setMargin(8);
    helper_->setFont(uiFont(10));
    list_->setFixedWidth(280);
    list_->setFrameShape(QFrame::NoFrame);
    list_->setDragDropMode(QAbstractItemView::InternalMove);
    list_->setDefaultDropAction(Qt::MoveAction);
    column->addWidget(empty_);
    column->addWidget(helper_);
    column->addWidget(list_);
    connect(list_, &QListWidget::itemChanged, this, [this](QListWidgetItem* item) {
        if (!updating_)
            view_.setCompositeWindowEnabled(item->data(idRole).toUInt(),
                                            item->checkState() == Qt::Checked);
    });
    connect(list_->model(), &QAbstractItemModel::rowsMoved, this,
            [this](const QModelIndex&, int from, int, const QModelIndex&, int before) {
                if (updating_)
                    return;
                const int to = before > from ? before - 1 : before;
                view_.moveCompositeWindow(static_cast<std::size_t>(from),
                                          static_cast<std::size_t>(to));
            });
}

void CompositeWindowsPopover::openBelow(QWidget* anchor) {
    refresh();
    move(anchor->mapToGlobal(QPoint(0, anchor->height())));
    show();
}

void CompositeWindowsPopover::refresh() {
    const auto& rows = view_.compositeWindows;
    empty_->setVisible(rows.empty());
    helper_->setVisible(!rows.empty());
    list_->setVisible(!rows.empty());
    updating_ = true;
    list_->clear();
    for (const CompositeEntry& row : rows) {
        QString text = QString::fromUtf8("\u2261  ") + qs(row.appName);
        if (!row.title.empty())
            text += "\n     " + qs(row.title);
        auto* item = new QListWidgetItem(text, list_);
        item->setData(idRole, row.id);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable | Qt::ItemIsDragEnabled |
                       Qt::ItemIsSelectable);
        item->setCheckState(row.enabled ? Qt::Checked : Qt::Unchecked);
        if (!row.enabled)
            item->setForeground(QColor(128, 128, 128, 115));  // the row at 0.45
        item->setSizeHint(QSize(280, 36));
    }
    updating_ = false;
    list_->setFixedHeight(static_cast<int>(WindowTexts::compositeListHeight(rows.size())));
    adjustSize();
}

void CompositeWindowsPopover::hideEvent(QHideEvent* event) {
    QFrame::hideEvent(event);
    if (view_.showingWindowsPopover)
        view_.setShowingWindowsPopover(false);
}

}  // namespace zd::app
