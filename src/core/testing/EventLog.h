#pragma once
// One ordered record of everything a run does, shared by the fakes of a test: calls to the
// other subsystems, waits asked of the clock, and every write to the progress model. A test
// compares it with the exact sequence it expects.

#include <string>
#include <vector>

#include "env/Clock.h"
#include "testing/ManualClock.h"
#include "ui/CaptureProgressModel.h"

namespace zd::testing {

class EventLog {
  public:
    void add(std::string entry);
    const std::vector<std::string>& entries() const { return entries_; }
    void clear() { entries_.clear(); }

    // Logs every delay asked of the clock as "wait {seconds}s".
    void watch(ManualClock& clock);
    // Logs every write: "status: …", "stage: …", "countdown: n", "done: n", "total: n".
    void watch(CaptureProgressModel& progress);

    // True while a job of a LoggingWorkerPool runs: entries then end in " (worker)".
    bool onWorker = false;

  private:
    std::vector<std::string> entries_;
    std::vector<Subscription> watching_;
};

// "0.6s", "1s", "0.25s".
std::string seconds(Nanos delay);

// Runs jobs at once on the calling thread, marking the log meanwhile.
class LoggingWorkerPool : public WorkerPool {
  public:
    explicit LoggingWorkerPool(EventLog& log) : log_(log) {}
    void run(std::function<void()> job, std::function<void()> done) override;

  private:
    EventLog& log_;
};

}  // namespace zd::testing
