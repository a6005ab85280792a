#pragma once
// The clock and worker pool of the running program: Qt timers and queued calls on the UI
// thread, Qt's global thread pool for blocking work.

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <map>

#include "env/Clock.h"

namespace zd {

class QtClock : public Clock {
public:
    QtClock();
    ~QtClock() override;
    Nanos now() const override;
    TimerId callAfter(Nanos delay, std::function<void()> fn) override;
    void cancel(TimerId id) override;
    void post(std::function<void()> fn) override;
    std::chrono::system_clock::time_point wallNow() const override {
        return std::chrono::system_clock::now();
    }

private:
    QObject context_;
    TimerId nextId_ = 1;
    std::map<TimerId, QPointer<QTimer>> timers_;
};

class QtWorkerPool : public WorkerPool {
public:
    explicit QtWorkerPool(Clock& uiClock) : ui_(uiClock) {}
    void run(std::function<void()> job, std::function<void()> done) override;

private:
    Clock& ui_;
};

}  // namespace zd
