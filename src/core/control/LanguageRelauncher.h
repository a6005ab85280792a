#pragma once
// Puts another application into a chosen language: ends it, writes the language into its
// preferences, starts it again with the language, and waits until a window of the new
// instance is on screen. Also reads the language it is in, and at the end of a run takes the
// override away and restarts it in its own language. Keeps no state between calls.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "env/Environment.h"
#include "model/CaptureTarget.h"
#include "model/Expected.h"
#include "model/Value.h"
#include "run/Task.h"

namespace zd {

class LanguageOverrideBackend;
class ProcessBackend;

namespace LanguageRelauncher {

// Why `relaunch` failed. It has no words of its own: the run puts it into words.
struct Failure {
    enum class Kind {
        relaunchFailed,   // `message` tells why
        missingBundleID,  // the target has no identity to relaunch by
        timedOut,         // no window of the new instance came up in time
    };
    Kind kind = Kind::relaunchFailed;
    std::string message;

    static Failure relaunchFailed(std::string text) {
        return {Kind::relaunchFailed, std::move(text)};
    }
    static Failure missingBundleID() { return {Kind::missingBundleID, {}}; }
    static Failure timedOut() { return {Kind::timedOut, {}}; }
    friend bool operator==(const Failure&, const Failure&) = default;
};

// The preference keys written into the target's domain.
inline constexpr std::string_view languagesKey = "AppleLanguages";
inline constexpr std::string_view localeKey = "AppleLocale";

// Ends the target, writes `languageCode` (as given, unchecked) into its preferences, starts it
// again in that language and waits for its first window. Uses the clock, workers, processes,
// language override and window list of `env`. Sleeps aren't cancellation points: once begun,
// a relaunch goes through to its end. The result replaces the caller's target.
Task<Expected<CaptureTarget, Failure>> relaunch(Environment env, CaptureTarget target,
                                                std::string languageCode, double settleDelay,
                                                double timeout);

// The language the application is set to: the override if one is written, else the user's
// first preferred language, else "en". Blocks until the tool has ended.
std::string currentLanguageCode(LanguageOverrideBackend& overrides, const std::string& bundleID);

// Whether two codes name the same language, one being a regional form of the other.
bool matchesLanguage(std::string_view a, std::string_view b);

// Deletes both keys from the application's domain. Blocks; failures are dropped.
void clearOverride(LanguageOverrideBackend& overrides, const std::string& bundleID);

// Clears the override, ends every instance of the application and starts it again in its own
// language, in the background. Never fails.
Task<void> revertToOriginalLanguage(Environment env, std::string bundleID);

// The first on-screen window of `pid` big enough to be a main window, or none.
std::optional<CaptureTarget> firstWindow(const Environment& env, std::int32_t pid);

// -- Rules, exposed for the backends and tests. --

// The first language code in the preferences tool's output ("(\n    \"zh-Hans\"\n)"), or none.
std::optional<std::string> firstLanguageCodeIn(std::string_view toolOutput);

// The window list entry that `firstWindow` takes for `pid`, as a target without identity
// and icon: layer 0, owner `pid`, a window number and owner name, at least 200 × 100 when
// bounds are given. `windowList` is the raw list (front to back).
std::optional<CaptureTarget> firstQualifyingWindow(const Value& windowList, std::int32_t pid);

}  // namespace LanguageRelauncher
}  // namespace zd
