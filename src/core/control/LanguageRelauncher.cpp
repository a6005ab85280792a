#include "control/LanguageRelauncher.h"

#include <algorithm>
#include <cctype>
#include <chrono>
#include <cmath>
#include <functional>
#include <regex>

#include "capture/WindowRecord.h"
#include "control/Utf8.h"
#include "env/LanguageOverrideBackend.h"
#include "env/ProcessBackend.h"
#include "env/WindowListBackend.h"

namespace zd::LanguageRelauncher {

namespace {

using namespace std::chrono_literals;

constexpr Nanos quitWait = 4s;
constexpr Nanos bundleGoneWait = 2s;
constexpr Nanos pollInterval = 150ms;
constexpr Nanos afterKillPause = 400ms;
constexpr Nanos windowPollInterval = 250ms;

// Only windows on screen count (raw value 1), desktop elements left out (16): a relaunched
// target whose window opened on another desktop isn't seen.
constexpr auto onScreenWithoutDesktop = static_cast<WindowListOption>(
    1u | static_cast<std::uint32_t>(WindowListOption::excludeDesktopElements));

// A sleep that the task's cancellation doesn't cut short: the relaunch sequence must run to
// its end once begun, and a cancelled sleep returning at once would turn its polling loops
// into busy loops.
class SteadySleep {
  public:
    SteadySleep(Clock& clock, Nanos delay) : clock_(clock), delay_(delay) {}
    bool await_ready() const noexcept { return false; }
    void await_suspend(std::coroutine_handle<> handle) {
        clock_.callAfter(delay_, [handle] { handle.resume(); });
    }
    void await_resume() const noexcept {}

  private:
    Clock& clock_;
    Nanos delay_;
};

// Asks `done` every poll interval until it holds or `limit` has passed (always at least once).
Task<void> pollUntil(Clock& clock, Nanos limit, std::function<bool()> done) {
    for (const Nanos deadline = clock.now() + limit; !done() && clock.now() < deadline;)
        co_await SteadySleep(clock, pollInterval);
}

// Seconds as a duration, for delays the caller gives. Negative or not-a-number counts as
// none and the too-large is capped, so no input can overflow the clock's arithmetic.
Nanos secondsToNanos(double seconds) {
    if (!(seconds > 0))
        return Nanos(0);
    constexpr double cap = 1e6;  // about eleven days
    return Nanos(static_cast<std::int64_t>(std::min(seconds, cap) * 1e9));
}

std::string lowercased(std::string_view text) {
    std::string out(text);
    for (char& c : out)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return out;
}

bool startsWithCodeAndDash(const std::string& longer, const std::string& shorter) {
    return longer.size() > shorter.size() && longer.compare(0, shorter.size(), shorter) == 0 &&
           longer[shorter.size()] == '-';
}

void runDefaults(LanguageOverrideBackend& overrides, const std::vector<std::string>& arguments) {
    (void)overrides.runDefaults(arguments);  // every failure is dropped
}

}  // namespace

bool matchesLanguage(std::string_view a, std::string_view b) {
    const std::string x = lowercased(a);
    const std::string y = lowercased(b);
    return x == y || startsWithCodeAndDash(x, y) || startsWithCodeAndDash(y, x);
}

std::optional<std::string> firstLanguageCodeIn(std::string_view toolOutput) {
    static const std::regex code("[a-zA-Z]{2,3}(-[A-Za-z0-9]+)*");
    std::match_results<std::string_view::const_iterator> match;
    if (!std::regex_search(toolOutput.begin(), toolOutput.end(), match, code))
        return std::nullopt;
    return match.str();
}

std::string currentLanguageCode(LanguageOverrideBackend& overrides, const std::string& bundleID) {
    const auto result = overrides.runDefaults({"read", bundleID, std::string(languagesKey)});
    if (result && result->exitStatus == 0) {
        // Output that isn't UTF-8 reads as empty text, which holds no code.
        if (isValidUtf8(result->standardOutput)) {
            if (auto found = firstLanguageCodeIn(result->standardOutput))
                return *found;
        }
    }
    const auto preferred = overrides.preferredLanguages();
    return preferred.empty() ? std::string("en") : preferred.front();
}

void clearOverride(LanguageOverrideBackend& overrides, const std::string& bundleID) {
    runDefaults(overrides, {"delete", bundleID, std::string(languagesKey)});
    runDefaults(overrides, {"delete", bundleID, std::string(localeKey)});
}

std::optional<CaptureTarget> firstQualifyingWindow(const Value& windowList, std::int32_t pid) {
    const ValueArray* entries = windowList.asArray();
    if (!entries)
        return std::nullopt;
    for (const Value& entry : *entries) {
        if (!entry.isDictionary())
            return std::nullopt;  // not a list of dictionaries
    }
    for (const Value& entry : *entries) {
        if (WindowRecord::layer(entry) != 0 || WindowRecord::ownerPID(entry) != pid)
            continue;
        const auto number = WindowRecord::number(entry);
        const auto ownerName = WindowRecord::ownerName(entry);
        // No bounds, or bounds that aren't all numbers, pass; a missing side counts as 0.
        if (!number || !ownerName || !WindowRecord::passesSize(entry, 200, 100))
            continue;

        CaptureTarget target;
        target.id = *number;
        target.appName = *ownerName;
        target.title = WindowRecord::name(entry);
        target.pid = pid;
        return target;
    }
    return std::nullopt;
}

std::optional<CaptureTarget> firstWindow(const Environment& env, std::int32_t pid) {
    const Value list = env.windowList->windowList(onScreenWithoutDesktop);
    auto target = firstQualifyingWindow(list, pid);
    if (!target)
        return std::nullopt;
    if (auto app = env.processes->runningApplication(pid)) {
        target->bundleId = app->bundleIdentifier;
        target->icon = app->icon;
    }
    return target;
}

Task<Expected<CaptureTarget, Failure>> relaunch(Environment env, CaptureTarget target,
                                                std::string languageCode, double settleDelay,
                                                double timeout) {
    if (!target.bundleId || target.bundleId->empty())
        co_return unexpected(Failure::missingBundleID());
    const std::string bundleID = *target.bundleId;
    Clock& clock = *env.clock;
    ProcessBackend& processes = *env.processes;
    LanguageOverrideBackend& overrides = *env.languageOverride;
    const std::int32_t pid = target.pid;

    if (processes.runningApplication(pid))
        processes.terminate(pid);

    co_await pollUntil(clock, quitWait, [&] { return !processes.runningApplication(pid); });

    if (auto app = processes.runningApplication(pid); app && !app->isTerminated) {
        processes.forceTerminate(pid);
        co_await SteadySleep(clock, afterKillPause);
    }

    // Other instances aren't ended here; they only use up this wait.
    co_await pollUntil(clock, bundleGoneWait,
                       [&] { return processes.runningApplications(bundleID).empty(); });

    co_await onWorker(*env.workers, [&overrides, &bundleID, &languageCode] {
        runDefaults(overrides,
                    {"write", bundleID, std::string(languagesKey), "-array", languageCode});
        runDefaults(overrides,
                    {"write", bundleID, std::string(localeKey), "-string", languageCode});
        // Reading back makes the preferences system settle the written values before launch.
        runDefaults(overrides, {"read", bundleID, std::string(languagesKey)});
    });

    co_await SteadySleep(clock, pollInterval);

    const auto location = processes.applicationLocation(bundleID);
    if (!location)
        co_return unexpected(Failure::relaunchFailed("Couldn't resolve " + bundleID + " on disk"));

    const LanguageLaunchSettings language = overrides.launchSettings(languageCode);
    LaunchRequest request;
    request.location = *location;
    request.arguments = language.arguments;
    request.environment = language.environment;
    request.activates = true;
    request.createsNewInstance = true;
    const auto launched = co_await onWorker(
        *env.workers, [&processes, &request] { return processes.launch(request); });
    // The start's own exit status isn't looked at: the wait for a window decides.
    if (!launched)
        co_return unexpected(Failure::relaunchFailed("open failed: " + launched.error()));

    co_await SteadySleep(clock, secondsToNanos(settleDelay));

    for (const Nanos deadline = clock.now() + secondsToNanos(timeout);;) {
        if (clock.now() >= deadline)
            co_return unexpected(Failure::timedOut());
        auto apps = processes.runningApplications(bundleID);
        // Newest first; one without a launch date counts as the distant past.
        std::stable_sort(apps.begin(), apps.end(), [](const auto& a, const auto& b) {
            return a.launchDate.value_or(std::chrono::system_clock::time_point::min()) >
                   b.launchDate.value_or(std::chrono::system_clock::time_point::min());
        });
        for (const auto& app : apps) {
            if (auto window = firstWindow(env, app.pid))
                co_return *window;
        }
        co_await SteadySleep(clock, windowPollInterval);
    }
}

Task<void> revertToOriginalLanguage(Environment env, std::string bundleID) {
    Clock& clock = *env.clock;
    ProcessBackend& processes = *env.processes;
    LanguageOverrideBackend& overrides = *env.languageOverride;

    co_await onWorker(*env.workers,
                      [&overrides, &bundleID] { clearOverride(overrides, bundleID); });

    for (const auto& app : processes.runningApplications(bundleID))
        processes.terminate(app.pid);
    co_await pollUntil(clock, quitWait,
                       [&] { return processes.runningApplications(bundleID).empty(); });
    for (const auto& app : processes.runningApplications(bundleID)) {
        if (!app.isTerminated)
            processes.forceTerminate(app.pid);
    }

    const auto location = processes.applicationLocation(bundleID);
    if (!location)
        co_return;
    // In its own language, behind the other windows, without taking the focus.
    LaunchRequest request;
    request.location = *location;
    request.activates = false;
    request.createsNewInstance = true;
    (void)co_await onWorker(*env.workers,
                            [&processes, &request] { return processes.launch(request); });
}

}  // namespace zd::LanguageRelauncher
