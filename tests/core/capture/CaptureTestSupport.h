#pragma once
// Shared set-up of the capture engine's tests: an environment of fakes, and running a task to
// its end on the inline worker pool (the engine never waits on the clock).

#include <gtest/gtest.h>

#include <optional>
#include <utility>

#include "env/Environment.h"
#include "run/Task.h"
#include "testing/FakeCaptureBackend.h"
#include "testing/FakeProcessBackend.h"
#include "testing/FakeScreenBackend.h"
#include "testing/FakeSpacesBackend.h"
#include "testing/FakeWindowListBackend.h"
#include "testing/FakeWindowSizingBackend.h"
#include "testing/ManualClock.h"
#include "testing/RecordingCanvas.h"

namespace zd::testing {

struct CaptureFakes {
    ManualClock clock;
    InlineWorkerPool workers;
    FakeWindowListBackend windowList;
    FakeCaptureBackend capture;
    FakeSpacesBackend spaces;
    FakeWindowSizingBackend sizing;
    FakeScreenBackend screens;
    FakeProcessBackend processes;
    RecordingCanvasFactory canvases;

    CaptureFakes() { processes.ownPid = 9999; }

    Environment env() {
        return {.clock = &clock,
                .workers = &workers,
                .screens = &screens,
                .windowList = &windowList,
                .capture = &capture,
                .spaces = &spaces,
                .sizing = &sizing,
                .processes = &processes,
                .canvases = &canvases};
    }

    // A regular application running as `pid`.
    void addApp(std::int32_t pid, const std::string& name,
                std::optional<std::string> bundle = std::nullopt,
                ActivationPolicy policy = ActivationPolicy::regular) {
        processes.add({.pid = pid,
                       .bundleIdentifier = std::move(bundle),
                       .localizedName = name,
                       .activationPolicy = policy});
    }
};

// An 800 × 600 window of the window server's list.
inline Value listed(std::uint32_t number, std::int32_t pid, const std::string& owner,
                    const std::string& title = "", int layer = 0) {
    return windowRecord(number, pid, owner, title, {0, 0, 800, 600}, layer);
}

template <class T>
T runToEnd(Task<T> task) {
    std::optional<T> result;
    auto body = [](Task<T> t, std::optional<T>& out) -> Task<void> {
        out.emplace(co_await std::move(t));
    };
    auto handle = spawn(body(std::move(task), result));
    EXPECT_TRUE(handle.isDone());
    return std::move(*result);
}

}  // namespace zd::testing
