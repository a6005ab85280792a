#include "QtClock.h"

#include <QMetaObject>
#include <QThreadPool>
#include <chrono>

namespace zd {

QtClock::QtClock() = default;

QtClock::~QtClock() {
    for (auto& [id, timer] : timers_) {
        if (timer) timer->deleteLater();
    }
}

Nanos QtClock::now() const {
    return std::chrono::duration_cast<Nanos>(std::chrono::steady_clock::now().time_since_epoch());
}

Clock::TimerId QtClock::callAfter(Nanos delay, std::function<void()> fn) {
    const TimerId id = nextId_++;
    auto* timer = new QTimer(&context_);  // owned by the context; deleted after firing
    timer->setSingleShot(true);
    timer->setTimerType(Qt::PreciseTimer);
    QObject::connect(timer, &QTimer::timeout, &context_, [this, id, timer, fn = std::move(fn)] {
        timers_.erase(id);
        timer->deleteLater();
        fn();
    });
    timers_.emplace(id, timer);
    const auto ms = std::chrono::ceil<std::chrono::milliseconds>(delay).count();
    timer->start(static_cast<int>(ms < 0 ? 0 : ms));
    return id;
}

void QtClock::cancel(TimerId id) {
    auto it = timers_.find(id);
    if (it == timers_.end()) return;
    if (it->second) {
        it->second->stop();
        it->second->deleteLater();
    }
    timers_.erase(it);
}

void QtClock::post(std::function<void()> fn) {
    QMetaObject::invokeMethod(&context_, std::move(fn), Qt::QueuedConnection);
}

void QtWorkerPool::run(std::function<void()> job, std::function<void()> done) {
    QThreadPool::globalInstance()->start([this, job = std::move(job), done = std::move(done)]() mutable {
        job();
        ui_.post(std::move(done));
    });
}

}  // namespace zd
