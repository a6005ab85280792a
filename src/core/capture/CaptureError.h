#pragma once
// Why a capture failed: one of the engine's own errors, or the system's error passed on as it
// stands. The run decides what the user reads; only the kind matters to it.

#include <optional>
#include <string>

namespace zd {

enum class CaptureError {
    windowNotFound,    // the window's id isn't in the shareable content
    permissionDenied,  // the query for shareable content failed, for whatever reason
    noContent,         // a frame couldn't be made into an image
    noDisplay,         // the shareable content lists no display
};

struct CaptureFailure {
    // None for a failure of the system, told in `systemMessage`.
    std::optional<CaptureError> error;
    std::string systemMessage;

    static CaptureFailure of(CaptureError e) { return {e, {}}; }
    static CaptureFailure system(std::string message) { return {std::nullopt, std::move(message)}; }
    bool is(CaptureError e) const { return error == e; }
    friend bool operator==(const CaptureFailure&, const CaptureFailure&) = default;
};

}  // namespace zd
