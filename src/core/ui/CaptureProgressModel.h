#pragma once
// The run's one channel to whatever shows it (the progress panel, the command line). A run
// writes the five published fields on the UI thread; every write is announced to the
// subscribers, also one that writes the value already held, the way an observable field does.

#include <functional>
#include <string>

#include "ui/ChangeNotices.h"

namespace zd {

class CaptureProgressModel {
  public:
    enum class Field {
        statusMessage,
        captureStage,
        countdownRemaining,
        shotsCompleted,
        shotsTotal
    };

    const std::string& statusMessage() const { return statusMessage_; }
    const std::string& captureStage() const { return captureStage_; }
    int countdownRemaining() const { return countdownRemaining_; }
    int shotsCompleted() const { return shotsCompleted_; }
    int shotsTotal() const { return shotsTotal_; }

    void setStatusMessage(std::string text);
    void setCaptureStage(std::string text);
    void setCountdownRemaining(int seconds);
    void setShotsCompleted(int count);
    void setShotsTotal(int count);

    // Called after each write with the field written; the model is already updated. Ends
    // with the handle.
    [[nodiscard]] Subscription subscribe(std::function<void(Field)> onChange) {
        return notifier_.subscribe(std::move(onChange));
    }

    // What the panel's stop button does; not published.
    std::function<void()> onCancel;

  private:
    std::string statusMessage_ = "Pick a window, then Take shots.";
    std::string captureStage_;
    int countdownRemaining_ = 0;
    int shotsCompleted_ = 0;
    int shotsTotal_ = 0;
    Notifier<Field> notifier_;

    void publish(Field field) { notifier_.announce(field); }
};

}  // namespace zd
