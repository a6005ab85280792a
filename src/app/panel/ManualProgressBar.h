#pragma once
// The progress panel's hand-drawn bar: a white track at 20 % and a solid white fill, both
// rounded, so it looks the same on the dark pill in every appearance. A new value eases the
// fill out to its width over 0.18 s.

#include <QVariantAnimation>
#include <QWidget>

namespace zd::app {

class ManualProgressBar : public QWidget {
  public:
    explicit ManualProgressBar(QWidget* parent = nullptr);

    void setProgress(int value, int total);
    // The fraction the fill shows at this moment.
    double shownFraction() const { return shown_; }
    QSize sizeHint() const override { return {200, 4}; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QVariantAnimation animation_;
    double shown_ = 0.0;
    int value_ = 0;
    int total_ = 0;
};

}  // namespace zd::app
