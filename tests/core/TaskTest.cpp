#include "run/Task.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "testing/ManualClock.h"

namespace zd {
namespace {

using namespace std::chrono_literals;
using testing::InlineWorkerPool;
using testing::ManualClock;

Task<int> napThenAnswer(ManualClock& clock, std::vector<std::string>& log) {
    log.push_back(co_await sleepFor(clock, 2s) ? "elapsed" : "cancelled");
    co_return 42;
}

Task<void> outer(ManualClock& clock, std::vector<std::string>& log) {
    const int answer = co_await napThenAnswer(clock, log);
    log.push_back("answer " + std::to_string(answer));
    log.push_back(co_await isCancelled() ? "stop seen" : "no stop");
    log.push_back(co_await sleepFor(clock, 1s) ? "elapsed" : "cancelled");
}

TEST(Task, SleepsResumeOnlyWhenManualTimeReachesThem) {
    ManualClock clock;
    std::vector<std::string> log;
    auto handle = spawn(outer(clock, log));
    clock.advance(1999ms);
    EXPECT_TRUE(log.empty());
    clock.advance(1ms);
    EXPECT_EQ(log, (std::vector<std::string>{"elapsed", "answer 42", "no stop"}));
    EXPECT_FALSE(handle.isDone());
    EXPECT_TRUE(clock.runUntilIdle());
    EXPECT_EQ(clock.now(), 3s);
    EXPECT_TRUE(handle.isDone());
    EXPECT_EQ(clock.requestedDelays(), (std::vector<Nanos>{2s, 1s}));
}

TEST(Task, CancellationEndsTheCurrentSleepAndEveryLaterOneAtOnce) {
    ManualClock clock;
    std::vector<std::string> log;
    auto handle = spawn(outer(clock, log));
    clock.advance(500ms);
    handle.cancel();
    clock.runPosted();
    EXPECT_EQ(log, (std::vector<std::string>{"cancelled", "answer 42", "stop seen", "cancelled"}));
    EXPECT_EQ(clock.now(), 500ms);
    EXPECT_EQ(clock.pendingTimers(), 0u);
    EXPECT_TRUE(handle.isDone());
}

Task<void> useWorker(WorkerPool& pool, int& out) {
    out = co_await onWorker(pool, [] { return 7; });
    co_await onWorker(pool, [&out] { out += 1; });
}

TEST(Task, WorkRunInlineByTheTestPoolResumesWithoutSuspending) {
    InlineWorkerPool pool;
    int out = 0;
    auto handle = spawn(useWorker(pool, out));
    EXPECT_TRUE(handle.isDone());
    EXPECT_EQ(out, 8);
    EXPECT_EQ(pool.jobs, 2);
}

}  // namespace
}  // namespace zd
