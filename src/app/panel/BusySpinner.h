#pragma once
// The small circular indeterminate indicator the progress panel shows when no countdown
// runs: a white arc that turns, only while it is on screen.

#include <QTimer>
#include <QWidget>

namespace zd::app {

class BusySpinner : public QWidget {
  public:
    explicit BusySpinner(QWidget* parent = nullptr);
    QSize sizeHint() const override { return {40, 40}; }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent*) override { frames_.start(); }
    void hideEvent(QHideEvent*) override { frames_.stop(); }

  private:
    QTimer frames_;
    int step_ = 0;
};

}  // namespace zd::app
