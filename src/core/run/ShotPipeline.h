#pragma once
// The run's pictures, made while the run goes on: each captured shot is composed and encoded on
// a worker as soon as it is handed over, one shot at a time and in order, and only its PNG
// bytes are kept for the save at the end. A raw capture lives until its shot is composed; the
// run asks for room before each capture, so captures never pile up behind a slow encoder.

#include <condition_variable>
#include <coroutine>
#include <cstddef>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "env/Clock.h"
#include "model/CapturedShot.h"
#include "run/RunOutput.h"

namespace zd {

class ShotPipeline {
    struct State;

  public:
    // Resumes the awaiting task on the UI thread once the pipeline is where it was asked to be.
    class Awaiter {
      public:
        enum class Until { roomFor, noWorkerBusy };
        Awaiter(std::shared_ptr<State> state, Until until, std::size_t pending)
            : state_(std::move(state)), until_(until), pending_(pending) {}
        bool await_ready() const;
        void await_suspend(std::coroutine_handle<> handle);
        void await_resume() const noexcept {}

      private:
        std::shared_ptr<State> state_;
        Until until_;
        std::size_t pending_;
    };

    ShotPipeline(WorkerPool& workers, ShotEncoder encode);
    // Drops every shot not yet started and waits for one a worker is encoding, so nothing
    // works on the run's pictures any more (and no worker reaches a state that has gone).
    ~ShotPipeline();
    ShotPipeline(const ShotPipeline&) = delete;
    ShotPipeline& operator=(const ShotPipeline&) = delete;

    // Hands a captured shot over; it is encoded after those handed over before it.
    void add(CapturedShot shot);
    // Shots handed over so far.
    std::size_t count() const;
    // Shots handed over and not encoded yet: the raw captures still held, the one being made
    // included.
    std::size_t pending() const;
    // co_await: resumes once at most `pending` shots are pending (at once if so already).
    Awaiter roomFor(std::size_t pending);
    // co_await: resumes once every shot is encoded.
    Awaiter finished() { return roomFor(0); }
    // Gives up every shot: none starts any more and any result still to come is thrown away.
    // co_await: resumes once no worker is encoding one of them.
    Awaiter drop();
    // The encoded shots in the order they were handed over; once none is pending.
    std::vector<EncodedShot> take();

  private:
    std::shared_ptr<State> state_;

    static void startNext(const std::shared_ptr<State>& state);
    static void jobCameBack(const std::shared_ptr<State>& state, std::optional<EncodedShot> result);
};

}  // namespace zd
