#include "ui/CaptureProgressModel.h"

#include <utility>
#include <vector>

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

CaptureProgressModel::SubscriptionId CaptureProgressModel::subscribe(
    std::function<void(Field)> onChange) {
    const SubscriptionId id = nextId_++;
    subscribers_.emplace(id, std::move(onChange));
    return id;
}

void CaptureProgressModel::unsubscribe(SubscriptionId id) {
    subscribers_.erase(id);
}

void CaptureProgressModel::publish(Field field) {
    // A subscriber may unsubscribe while being told; walk a copy.
    std::vector<std::function<void(Field)>> current;
    current.reserve(subscribers_.size());
    for (const auto& [id, fn] : subscribers_)
        current.push_back(fn);
    for (const auto& fn : current)
        fn(field);
}

}  // namespace zd
