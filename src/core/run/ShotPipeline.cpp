#include "run/ShotPipeline.h"

#include <utility>

namespace zd {

struct ShotPipeline::State {
    WorkerPool* workers = nullptr;
    ShotEncoder encode;

    // Shared with the workers.
    std::mutex mutex;
    std::condition_variable workerDone;
    bool dropped = false;     // no shot starts any more
    bool workerBusy = false;  // a worker is inside `encode`

    // The UI thread's own.
    std::deque<CapturedShot> waiting;
    bool jobOut = false;  // handed to the pool, its `done` not back yet
    std::size_t added = 0;
    std::vector<EncodedShot> encoded;
    std::coroutine_handle<> waiter;
    Awaiter::Until waitUntil = Awaiter::Until::roomFor;
    std::size_t waitPending = 0;

    std::size_t pending() const { return waiting.size() + (jobOut ? 1 : 0); }
    bool isDropped() {
        std::lock_guard lock(mutex);
        return dropped;
    }
    bool reached(Awaiter::Until until, std::size_t n) {
        if (until == Awaiter::Until::roomFor)
            return pending() <= n;
        std::lock_guard lock(mutex);
        return !workerBusy;
    }
};

ShotPipeline::ShotPipeline(WorkerPool& workers, ShotEncoder encode)
    : state_(std::make_shared<State>()) {
    state_->workers = &workers;
    state_->encode = std::move(encode);
}

ShotPipeline::~ShotPipeline() {
    state_->waiting.clear();
    state_->waiter = {};
    std::unique_lock lock(state_->mutex);
    state_->dropped = true;
    state_->workerDone.wait(lock, [this] { return !state_->workerBusy; });
}

void ShotPipeline::add(CapturedShot shot) {
    if (state_->isDropped())
        return;
    ++state_->added;
    state_->waiting.push_back(std::move(shot));
    startNext(state_);
}

std::size_t ShotPipeline::count() const {
    return state_->added;
}

std::size_t ShotPipeline::pending() const {
    return state_->pending();
}

ShotPipeline::Awaiter ShotPipeline::roomFor(std::size_t pending) {
    return {state_, Awaiter::Until::roomFor, pending};
}

ShotPipeline::Awaiter ShotPipeline::drop() {
    {
        std::lock_guard lock(state_->mutex);
        state_->dropped = true;
    }
    state_->waiting.clear();
    state_->encoded.clear();
    return {state_, Awaiter::Until::noWorkerBusy, 0};
}

std::vector<EncodedShot> ShotPipeline::take() {
    return std::exchange(state_->encoded, {});
}

bool ShotPipeline::Awaiter::await_ready() const {
    return state_->reached(until_, pending_);
}

void ShotPipeline::Awaiter::await_suspend(std::coroutine_handle<> handle) {
    state_->waiter = handle;
    state_->waitUntil = until_;
    state_->waitPending = pending_;
}

void ShotPipeline::startNext(const std::shared_ptr<State>& state) {
    if (state->jobOut || state->waiting.empty())
        return;
    state->jobOut = true;
    // Out of the queue before the pool sees it: a pool may run the job and its `done` at once.
    CapturedShot shot = std::move(state->waiting.front());
    state->waiting.pop_front();
    auto result = std::make_shared<std::optional<EncodedShot>>();
    state->workers->run(
        [state, result, shot = std::move(shot)]() mutable {
            {
                std::lock_guard lock(state->mutex);
                if (state->dropped)
                    return;
                state->workerBusy = true;
            }
            EncodedShot encoded = state->encode(std::move(shot));
            {
                std::lock_guard lock(state->mutex);
                state->workerBusy = false;
                if (!state->dropped)
                    *result = std::move(encoded);
            }
            state->workerDone.notify_all();
        },
        [state, result] { jobCameBack(state, std::move(*result)); });
}

void ShotPipeline::jobCameBack(const std::shared_ptr<State>& state,
                               std::optional<EncodedShot> result) {
    state->jobOut = false;
    if (!state->isDropped()) {
        if (result)
            state->encoded.push_back(std::move(*result));
        startNext(state);
    }
    // Last: the task resumed may end the run and destroy the pipeline.
    if (state->waiter && state->reached(state->waitUntil, state->waitPending))
        std::exchange(state->waiter, {}).resume();
}

}  // namespace zd
