#pragma once
// A small picture of a background choice in the proportions 1.6 to 1: the checkerboard for
// transparent, the plain colour, or the chosen picture (the photo symbol when there is none
// or it can't be read; it is read again at each drawing).

#include <QColor>
#include <QString>

#include "controls/SelectableTile.h"
#include "model/BackgroundKind.h"

namespace zd::app {

class BackgroundKindTile : public SelectableTile {
  public:
    explicit BackgroundKindTile(BackgroundKind kind, QWidget* parent = nullptr);

    void setColor(const QColor& color);
    // A file's path; empty for none.
    void setImagePath(const QString& path);
    QSize sizeHint() const override { return {92, 60}; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override { return static_cast<int>(width / 1.6); }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    BackgroundKind kind_;
    QColor color_ = Qt::white;
    QString imagePath_;
};

}  // namespace zd::app
