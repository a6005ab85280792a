#pragma once
// Time and the UI thread's queue. Nothing in the core sleeps or reads the time directly:
// every wait asks this clock, so tests drive time by hand.

#include <chrono>
#include <cstdint>
#include <functional>

namespace zd {

using Nanos = std::chrono::nanoseconds;

class Clock {
public:
    using TimerId = std::uint64_t;
    virtual ~Clock() = default;

    // Monotonic time since an arbitrary origin.
    virtual Nanos now() const = 0;
    // Calls `fn` on the UI thread once `delay` has passed.
    virtual TimerId callAfter(Nanos delay, std::function<void()> fn) = 0;
    // Drops a timer that hasn't fired; nothing if it has.
    virtual void cancel(TimerId id) = 0;
    // Queues `fn` to run soon on the UI thread. Safe to call from any thread.
    virtual void post(std::function<void()> fn) = 0;
    // Wall-clock time, for names and stamps.
    virtual std::chrono::system_clock::time_point wallNow() const = 0;
};

// Runs blocking work (tool runs, waits for processes, text recognition) off the UI thread.
class WorkerPool {
public:
    virtual ~WorkerPool() = default;
    // Runs `job` on a worker, then `done` on the UI thread.
    virtual void run(std::function<void()> job, std::function<void()> done) = 0;
};

}  // namespace zd
