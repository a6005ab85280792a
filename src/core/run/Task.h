#pragma once
// The run's coroutines. A `Task<T>` is a lazily started coroutine on the UI thread; awaiting
// one starts it and hands it the awaiting task's stop token, so cancellation reaches every
// nested step the way a structured task tree does. Waits go through the injected `Clock`:
// `co_await sleepFor(clock, d)` gives true when the time passed and false when the task was
// cancelled (at once if it already was). `co_await isCancelled()` tests the token without
// suspending. `co_await onWorker(pool, fn)` runs blocking work off the UI thread.

#include <coroutine>
#include <exception>
#include <memory>
#include <optional>
#include <stop_token>
#include <type_traits>
#include <utility>

#include "env/Clock.h"

namespace zd {

namespace detail {

template <class P>
std::stop_token stopTokenOf(std::coroutine_handle<P> handle) {
    if constexpr (requires { handle.promise().stopToken; }) {
        return handle.promise().stopToken;
    } else {
        return {};
    }
}

struct PromiseBase {
    std::coroutine_handle<> continuation;
    std::stop_token stopToken;
    std::exception_ptr exception;

    struct FinalAwaiter {
        bool await_ready() const noexcept { return false; }
        template <class P>
        std::coroutine_handle<> await_suspend(std::coroutine_handle<P> h) noexcept {
            auto next = h.promise().continuation;
            return next ? next : std::noop_coroutine();
        }
        void await_resume() const noexcept {}
    };

    std::suspend_always initial_suspend() const noexcept { return {}; }
    FinalAwaiter final_suspend() const noexcept { return {}; }
    void unhandled_exception() { exception = std::current_exception(); }
};

template <class T>
struct Promise : PromiseBase {
    std::optional<T> value;
    template <class U>
    void return_value(U&& v) {
        value.emplace(std::forward<U>(v));
    }
    T take() {
        if (exception) std::rethrow_exception(exception);
        return std::move(*value);
    }
};

template <>
struct Promise<void> : PromiseBase {
    void return_void() const noexcept {}
    void take() const {
        if (exception) std::rethrow_exception(exception);
    }
};

}  // namespace detail

template <class T = void>
class [[nodiscard]] Task {
public:
    struct promise_type : detail::Promise<T> {
        Task get_return_object() {
            return Task(std::coroutine_handle<promise_type>::from_promise(*this));
        }
    };
    using Handle = std::coroutine_handle<promise_type>;

    Task(Task&& other) noexcept : handle_(std::exchange(other.handle_, {})) {}
    Task& operator=(Task&& other) noexcept {
        if (this != &other) {
            if (handle_) handle_.destroy();
            handle_ = std::exchange(other.handle_, {});
        }
        return *this;
    }
    Task(const Task&) = delete;
    Task& operator=(const Task&) = delete;
    ~Task() {
        if (handle_) handle_.destroy();
    }

    bool await_ready() const noexcept { return false; }
    template <class P>
    std::coroutine_handle<> await_suspend(std::coroutine_handle<P> awaiting) noexcept {
        handle_.promise().continuation = awaiting;
        handle_.promise().stopToken = detail::stopTokenOf(awaiting);
        return handle_;
    }
    T await_resume() { return handle_.promise().take(); }

private:
    explicit Task(Handle h) : handle_(h) {}
    Handle handle_;
};

// A started top-level task: can be cancelled, and tells whether it has finished.
class TaskHandle {
public:
    struct State {
        std::stop_source source;
        bool done = false;
    };

    TaskHandle() = default;
    explicit TaskHandle(std::shared_ptr<State> state) : state_(std::move(state)) {}
    void cancel() const {
        if (state_) state_->source.request_stop();
    }
    bool isCancelled() const { return state_ && state_->source.stop_requested(); }
    bool isDone() const { return !state_ || state_->done; }

private:
    std::shared_ptr<State> state_;
};

namespace detail {

struct Detached {
    struct promise_type {
        std::stop_token stopToken;
        template <class... Args>
        explicit promise_type(Task<void>&, const std::shared_ptr<TaskHandle::State>& state,
                              Args&&...)
            : stopToken(state->source.get_token()) {}
        Detached get_return_object() const noexcept { return {}; }
        std::suspend_never initial_suspend() const noexcept { return {}; }
        std::suspend_never final_suspend() const noexcept { return {}; }
        void return_void() const noexcept {}
        [[noreturn]] void unhandled_exception() const noexcept { std::terminate(); }
    };
};

inline Detached runDetached(Task<void> task, std::shared_ptr<TaskHandle::State> state) {
    co_await std::move(task);
    state->done = true;
}

}  // namespace detail

// Starts a task at once, on the calling (UI) thread, running it up to its first suspension.
inline TaskHandle spawn(Task<void> task) {
    auto state = std::make_shared<TaskHandle::State>();
    detail::runDetached(std::move(task), state);
    return TaskHandle(state);
}

// Suspends for `delay` on the clock. Resumes with true when the time has passed, false when
// the task is cancelled meanwhile (or already was: then it doesn't suspend at all).
class SleepAwaiter {
public:
    SleepAwaiter(Clock& clock, Nanos delay) : clock_(clock), delay_(delay) {}

    bool await_ready() const noexcept { return false; }
    template <class P>
    bool await_suspend(std::coroutine_handle<P> handle) {
        auto token = detail::stopTokenOf(handle);
        if (token.stop_requested()) return false;
        state_ = std::make_shared<State>();
        state_->handle = handle;
        state_->clock = &clock_;
        state_->timer = clock_.callAfter(delay_, [state = state_] { state->finish(true); });
        if (token.stop_possible()) {
            std::weak_ptr<State> weak = state_;
            state_->onStop.emplace(token, std::function<void()>([weak] {
                if (auto state = weak.lock()) {
                    state->clock->post([state] { state->finish(false); });
                }
            }));
        }
        return true;
    }
    bool await_resume() const noexcept { return state_ && state_->elapsed; }

private:
    struct State {
        std::coroutine_handle<> handle;
        Clock* clock = nullptr;
        Clock::TimerId timer = 0;
        bool finished = false;
        bool elapsed = false;
        std::optional<std::stop_callback<std::function<void()>>> onStop;

        void finish(bool timeElapsed) {
            if (finished) return;
            finished = true;
            elapsed = timeElapsed;
            if (!timeElapsed) clock->cancel(timer);
            handle.resume();
        }
    };

    Clock& clock_;
    Nanos delay_;
    std::shared_ptr<State> state_;
};

inline SleepAwaiter sleepFor(Clock& clock, Nanos delay) { return {clock, delay}; }

// Tests the awaiting task's cancellation without suspending.
class CancellationCheck {
public:
    bool await_ready() const noexcept { return false; }
    template <class P>
    bool await_suspend(std::coroutine_handle<P> handle) noexcept {
        token_ = detail::stopTokenOf(handle);
        return false;
    }
    bool await_resume() const noexcept { return token_.stop_requested(); }

private:
    std::stop_token token_;
};

inline CancellationCheck isCancelled() { return {}; }

// Runs `fn` on a worker of `pool` and resumes on the UI thread with its result.
template <class F>
class WorkerAwaiter {
public:
    using Result = std::invoke_result_t<F&>;

    WorkerAwaiter(WorkerPool& pool, F fn) : pool_(pool), fn_(std::move(fn)) {}

    bool await_ready() const noexcept { return false; }
    bool await_suspend(std::coroutine_handle<> handle) {
        auto state = std::make_shared<Sync>();
        state->handle = handle;
        pool_.run(
            [this] {
                if constexpr (std::is_void_v<Result>) {
                    fn_();
                } else {
                    result_.emplace(fn_());
                }
            },
            [state] {
                if (state->insideSuspend) {
                    state->completedInline = true;
                } else {
                    state->handle.resume();
                }
            });
        state->insideSuspend = false;
        // A pool that ran the job inline has already finished: don't suspend at all.
        return !state->completedInline;
    }
    Result await_resume() {
        if constexpr (!std::is_void_v<Result>) return std::move(*result_);
    }

private:
    struct Sync {
        std::coroutine_handle<> handle;
        bool insideSuspend = true;
        bool completedInline = false;
    };
    struct Empty {};
    using Stored = std::conditional_t<std::is_void_v<Result>, Empty, Result>;

    WorkerPool& pool_;
    F fn_;
    std::optional<Stored> result_;
};

template <class F>
WorkerAwaiter<F> onWorker(WorkerPool& pool, F fn) {
    return {pool, std::move(fn)};
}

}  // namespace zd
