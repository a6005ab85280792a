#pragma once
// The film-leader dial shown while a countdown runs: a ring, a cross of hairlines, an arm that
// sweeps once a second with the wall clock, and the seconds left as a digit. It is redrawn at
// the display's pace only while it is on screen.

#include <QTimer>
#include <QWidget>

#include <functional>

namespace zd::app {

class NewsreelCountdown : public QWidget {
  public:
    // `wallClock` gives the wall-clock time in seconds; the system's clock when none.
    explicit NewsreelCountdown(QWidget* parent = nullptr,
                               std::function<double()> wallClock = nullptr);

    void setValue(int seconds);
    int value() const { return value_; }
    bool animating() const { return frames_.isActive(); }
    QSize sizeHint() const override { return {40, 40}; }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    std::function<double()> wallClock_;
    QTimer frames_;
    int value_ = 0;
};

}  // namespace zd::app
