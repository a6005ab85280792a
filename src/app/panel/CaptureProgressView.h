#pragma once
// What the progress panel holds, read from the run's progress model: the countdown dial while
// a countdown runs (else a spinner), the headline, the bar and "c/t" when there is a total,
// and the red Stop capsule that calls the model's onCancel.

#include <QLabel>
#include <QPushButton>
#include <QWidget>

#include <functional>

#include "ui/CaptureProgressModel.h"

namespace zd::app {

class BusySpinner;
class ElidedLabel;
class ManualProgressBar;
class NewsreelCountdown;

class CaptureProgressView : public QWidget {
  public:
    explicit CaptureProgressView(QWidget* parent = nullptr,
                                 std::function<double()> wallClock = nullptr);
    ~CaptureProgressView() override;

    // Follows `model` from now on (none: shows nothing new). The model outlives the view.
    void setModel(CaptureProgressModel* model);

    NewsreelCountdown* countdown() const { return countdown_; }
    BusySpinner* spinner() const { return spinner_; }
    ElidedLabel* headline() const { return headline_; }
    ManualProgressBar* bar() const { return bar_; }
    QLabel* count() const { return count_; }
    QPushButton* stopButton() const { return stop_; }

  private:
    void refresh();

    CaptureProgressModel* model_ = nullptr;
    Subscription subscription_;  // ends with the view
    NewsreelCountdown* countdown_;
    BusySpinner* spinner_;
    ElidedLabel* headline_;
    QWidget* progressRow_;
    ManualProgressBar* bar_;
    QLabel* count_;
    QPushButton* stop_;
};

}  // namespace zd::app
