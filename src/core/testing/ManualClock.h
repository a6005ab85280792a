#pragma once
// A clock whose time passes only when a test says so. Timers fire in order of due time (and
// of creation among equals); posted work runs before and after every timer. Every delay that
// code asks for is recorded, so a test can assert the exact waits of a run.

#include <deque>
#include <functional>
#include <map>
#include <utility>
#include <vector>

#include "env/Clock.h"

namespace zd::testing {

class ManualClock : public Clock {
  public:
    Nanos now() const override { return now_; }
    TimerId callAfter(Nanos delay, std::function<void()> fn) override;
    void cancel(TimerId id) override;
    void post(std::function<void()> fn) override { posted_.push_back(std::move(fn)); }
    std::chrono::system_clock::time_point wallNow() const override {
        return wallOrigin + std::chrono::duration_cast<std::chrono::system_clock::duration>(now_);
    }

    // Runs what is posted, then every timer due within `delay`, in order; time ends at now+delay.
    void advance(Nanos delay);
    // Runs timers one after another, jumping to each due time, until none is left. Gives false
    // if a timer lies further than `limit` ahead of the start (a run that never ends).
    bool runUntilIdle(Nanos limit = std::chrono::hours(1));
    // Runs the posted queue only; time doesn't move.
    void runPosted();

    std::size_t pendingTimers() const { return timers_.size(); }
    // Delays asked for through callAfter, in order.
    const std::vector<Nanos>& requestedDelays() const { return requested_; }
    // Called with every delay as it is asked for (a test may write it into its call log).
    std::function<void(Nanos)> onCallAfter;

    std::chrono::system_clock::time_point wallOrigin{};

  private:
    Nanos now_{0};
    TimerId nextId_ = 1;
    std::map<std::pair<Nanos, TimerId>, std::function<void()>> timers_;
    std::map<TimerId, Nanos> dueOf_;
    std::deque<std::function<void()>> posted_;
    std::vector<Nanos> requested_;

    void fireFirst();
};

// Runs blocking work at once, on the calling thread.
class InlineWorkerPool : public WorkerPool {
  public:
    void run(std::function<void()> job, std::function<void()> done) override {
        ++jobs;
        job();
        done();
    }
    int jobs = 0;
};

// Holds jobs until a test runs them, each followed at once by its `done`.
class ManualWorkerPool : public WorkerPool {
public:
    void run(std::function<void()> job, std::function<void()> done) override {
        jobs_.emplace_back(std::move(job), std::move(done));
    }
    // Runs the oldest job; false when none is queued.
    bool runNext() {
        if (jobs_.empty())
            return false;
        auto [job, done] = std::move(jobs_.front());
        jobs_.pop_front();
        job();
        done();
        return true;
    }
    std::size_t queued() const { return jobs_.size(); }

private:
    std::deque<std::pair<std::function<void()>, std::function<void()>>> jobs_;
};

}  // namespace zd::testing
