#pragma once
// A text tile: a label in semibold and an optional detail below it, free to wrap, on the
// shared selectable look; it takes all the width given, its text at the left.

#include <QLabel>

#include <optional>

#include "controls/SelectableTile.h"

namespace zd::app {

class Tile : public SelectableTile {
  public:
    explicit Tile(QWidget* parent = nullptr, bool compact = false);

    void setLabel(const QString& label);
    void setDetail(const std::optional<QString>& detail);
    QLabel* labelText() const { return label_; }
    QLabel* detailText() const { return detail_; }
    QSize sizeHint() const override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    QLabel* label_;
    QLabel* detail_;
};

}  // namespace zd::app
