#pragma once
// Lays its widgets out in rows of equal columns, as many columns of at least `minColumn` wide
// as the width holds, each stretched to fill its share of the row.

#include <QLayout>
#include <QList>

namespace zd::app {

class FlowLayout : public QLayout {
  public:
    FlowLayout(int minColumn, int spacing, QWidget* parent = nullptr);
    ~FlowLayout() override;
    void addItem(QLayoutItem* item) override { items_.append(item); }
    int count() const override { return static_cast<int>(items_.size()); }
    QLayoutItem* itemAt(int index) const override { return items_.value(index); }
    QLayoutItem* takeAt(int index) override;
    QSize sizeHint() const override { return minimumSize(); }
    QSize minimumSize() const override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override { return arrange(QRect(0, 0, width, 0), false); }
    void setGeometry(const QRect& rect) override;

  private:
    int arrange(const QRect& rect, bool place) const;
    QList<QLayoutItem*> items_;
    int minColumn_;
    int gap_;
};

}  // namespace zd::app
