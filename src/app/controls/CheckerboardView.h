#pragma once
// Stands for transparency: squares of two light greys from the upper left, the last row and
// column cut off by the area.

#include <QPainter>
#include <QWidget>

namespace zd::app {

void paintCheckerboard(QPainter& painter, const QRectF& area, double squareSize);

class CheckerboardView : public QWidget {
  public:
    explicit CheckerboardView(double squareSize, QWidget* parent = nullptr)
        : QWidget(parent), squareSize_(squareSize) {}

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        paintCheckerboard(painter, rect(), squareSize_);
    }

  private:
    double squareSize_;
};

}  // namespace zd::app
