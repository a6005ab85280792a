#include "testing/EventLog.h"

#include <cstdio>

namespace zd::testing {

void EventLog::add(std::string entry) {
    if (onWorker)
        entry += " (worker)";
    entries_.push_back(std::move(entry));
}

std::string seconds(Nanos delay) {
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%g", static_cast<double>(delay.count()) / 1e9);
    return std::string(buffer) + "s";
}

void EventLog::watch(ManualClock& clock) {
    clock.onCallAfter = [this](Nanos delay) { add("wait " + seconds(delay)); };
}

void EventLog::watch(CaptureProgressModel& progress) {
    using Field = CaptureProgressModel::Field;
    watching_.push_back(progress.subscribe([this, &progress](Field field) {
        switch (field) {
            case Field::statusMessage:
                add("status: " + progress.statusMessage());
                break;
            case Field::captureStage:
                add("stage: " + progress.captureStage());
                break;
            case Field::countdownRemaining:
                add("countdown: " + std::to_string(progress.countdownRemaining()));
                break;
            case Field::shotsCompleted:
                add("done: " + std::to_string(progress.shotsCompleted()));
                break;
            case Field::shotsTotal:
                add("total: " + std::to_string(progress.shotsTotal()));
                break;
        }
    }));
}

void LoggingWorkerPool::run(std::function<void()> job, std::function<void()> done) {
    log_.onWorker = true;
    job();
    log_.onWorker = false;
    done();
}

}  // namespace zd::testing
