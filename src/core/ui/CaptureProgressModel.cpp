#include "ui/CaptureProgressModel.h"

#include <utility>

namespace zd {

void CaptureProgressModel::setStatusMessage(std::string text) {
    statusMessage_ = std::move(text);
    publish(Field::statusMessage);
}

void CaptureProgressModel::setCaptureStage(std::string text) {
    captureStage_ = std::move(text);
    publish(Field::captureStage);
}

void CaptureProgressModel::setCountdownRemaining(int seconds) {
    countdownRemaining_ = seconds;
    publish(Field::countdownRemaining);
}

void CaptureProgressModel::setShotsCompleted(int count) {
    shotsCompleted_ = count;
    publish(Field::shotsCompleted);
}

void CaptureProgressModel::setShotsTotal(int count) {
    shotsTotal_ = count;
    publish(Field::shotsTotal);
}

}  // namespace zd
