#pragma once
// Any failure that can end a run, carried from the step that met it to the place that puts it
// into words: the typed failures of capture, relaunch and appearance (a capture failure may
// also be the system's own, with its text), and the task's cancellation.

#include <string>
#include <variant>

#include "capture/CaptureError.h"
#include "control/AppearanceController.h"
#include "control/LanguageRelauncher.h"

namespace zd {

// The run's task was cancelled while a step waited.
struct Cancellation {
    friend bool operator==(const Cancellation&, const Cancellation&) = default;
};

using RunError = std::variant<CaptureFailure, LanguageRelauncher::Failure,
                              AppearanceController::Failure, Cancellation>;

inline bool isCancellation(const RunError& error) {
    return std::holds_alternative<Cancellation>(error);
}

// The text the user reads for a failure that has none of its own: the system's generic
// sentence naming the failure's type and case number, as the platform words it.
std::string localizedDescription(const RunError& error);

}  // namespace zd
