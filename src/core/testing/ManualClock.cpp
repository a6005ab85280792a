#include "testing/ManualClock.h"

namespace zd::testing {

Clock::TimerId ManualClock::callAfter(Nanos delay, std::function<void()> fn) {
    const TimerId id = nextId_++;
    requested_.push_back(delay);
    if (onCallAfter) onCallAfter(delay);
    const Nanos due = now_ + (delay.count() > 0 ? delay : Nanos(0));
    timers_.emplace(std::make_pair(due, id), std::move(fn));
    dueOf_.emplace(id, due);
    return id;
}

void ManualClock::cancel(TimerId id) {
    auto it = dueOf_.find(id);
    if (it == dueOf_.end()) return;
    timers_.erase({it->second, id});
    dueOf_.erase(it);
}

void ManualClock::runPosted() {
    while (!posted_.empty()) {
        auto fn = std::move(posted_.front());
        posted_.pop_front();
        fn();
    }
}

void ManualClock::fireFirst() {
    auto it = timers_.begin();
    now_ = it->first.first;
    auto fn = std::move(it->second);
    dueOf_.erase(it->first.second);
    timers_.erase(it);
    fn();
    runPosted();
}

void ManualClock::advance(Nanos delay) {
    const Nanos target = now_ + delay;
    runPosted();
    while (!timers_.empty() && timers_.begin()->first.first <= target) fireFirst();
    now_ = target;
}

bool ManualClock::runUntilIdle(Nanos limit) {
    const Nanos start = now_;
    runPosted();
    while (!timers_.empty()) {
        if (timers_.begin()->first.first - start > limit) return false;
        fireFirst();
    }
    return true;
}

}  // namespace zd::testing
