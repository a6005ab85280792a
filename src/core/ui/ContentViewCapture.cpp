// ContentView: posing the target and taking the pictures of one language state.

#include <algorithm>
#include <chrono>
#include <utility>

#include "control/AppearanceFollow.h"
#include "run/RunTexts.h"
#include "store/FlathubExport.h"
#include "ui/ContentView.h"

namespace zd {

namespace {

using std::chrono::milliseconds;
using Shots = std::vector<CapturedShot>;

constexpr milliseconds kAppearanceSettle{600};

CapturedShot makeShot(const std::string& code, const std::string& label, AppearanceMode mode,
                      Image image, CaptureScope scope) {
    return {makeUUID(), code, label, mode, std::move(image), scope == CaptureScope::allWindows};
}

}  // namespace

Task<void> ContentView::raiseAndCountdown(std::optional<CaptureTarget> target, std::string prefix) {
    if (target && services_.runningApplication(target->pid)) {
        services_.activateApplication(target->pid);
    }
    const int seconds = countdownSeconds;
    if (seconds >= 1) {
        const std::string name = target ? target->appName : std::string("the desktop");
        progress.setStatusMessage(RunTexts::countdownStatus(prefix, name));
        // Cancelled waits end at once: the numbers race down and the caller looks at it.
        for (int remaining = seconds; remaining >= 1; --remaining) {
            progress.setCountdownRemaining(remaining);
            (void)co_await sleepFor(clock(), milliseconds(1000));
        }
        progress.setCountdownRemaining(0);
    }
    (void)co_await sleepFor(clock(), milliseconds(200));
}

Task<Expected<Shots, RunError>> ContentView::captureCurrentLanguage(
    std::optional<CaptureTarget> target, std::string code, std::string label, ShotTaken taken) {
    if (target && captureScope == CaptureScope::singleWindow &&
        sizePreset != WindowSizePreset::current) {
        // Ask quietly first; only without the permission show the system's prompt. The
        // answer changes nothing: the window is sized as far as the system lets us.
        if (!services_.isAccessibilityTrusted(false))
            (void)services_.isAccessibilityTrusted(true);
        if (store == Store::flathub)
            services_.applyWindowSizeWithin(sizePreset, target->pid,
                                            FlathubExport::logicalWindowLimit);
        else
            services_.applyWindowSize(sizePreset, target->pid);
        (void)co_await sleepFor(clock(), milliseconds(300));
    }

    const CaptureScope scope = captureScope;
    std::optional<CaptureEngine::FullDisplayLayout> layout;
    if (scope == CaptureScope::allWindows) {
        auto built =
            co_await services_.buildLayoutFromCompositeWindows(compositeWindows, captureRecords);
        if (!built)
            co_return unexpected(RunError(built.error()));
        layout = std::move(built.value());
    }

    const bool wantLight = enabledAppearances.count(AppearanceMode::light) > 0;
    const bool wantDark = enabledAppearances.count(AppearanceMode::dark) > 0;
    if (wantLight && wantDark) {
        co_return co_await captureBothAppearances(scope, std::move(target), std::move(layout),
                                                  std::move(code), std::move(label),
                                                  std::move(taken));
    }
    // With no appearance enabled at all one dark shot is taken.
    const AppearanceMode mode = wantLight ? AppearanceMode::light : AppearanceMode::dark;
    co_return co_await captureOneAppearance(mode, scope, std::move(target), std::move(layout),
                                            std::move(code), std::move(label), std::move(taken));
}

Task<Expected<Image, CaptureFailure>> ContentView::captureOne(
    CaptureScope scope, const std::optional<CaptureTarget>& target,
    const std::optional<CaptureEngine::FullDisplayLayout>& layout) {
    if (scope == CaptureScope::allWindows)
        co_return co_await services_.captureFullDisplay(layout, captureRecords);
    if (!target)
        co_return unexpected(CaptureFailure::of(CaptureError::windowNotFound));
    co_return co_await services_.captureWindow(*target);
}

// Both appearances: every appearance call goes to a worker, any failure (a failed switch, a
// cancelled wait, a failed capture) puts the prior appearance back and ends the language.
Task<Expected<Shots, RunError>> ContentView::captureBothAppearances(
    CaptureScope scope, std::optional<CaptureTarget> target,
    std::optional<CaptureEngine::FullDisplayLayout> layout, std::string code, std::string label,
    ShotTaken taken) {
    progress.setStatusMessage(RunTexts::capturingBothAppearances(label));
    WorkerPool& pool = *env_.workers;
    const std::optional<AppearanceMode> prior =
        co_await onWorker(pool, [this] { return services_.currentAppearance(); });
    auto restorePrior = [this, prior] {
        if (prior)
            (void)services_.setAppearance(*prior);
    };

    Shots shots;
    for (AppearanceMode mode : {AppearanceMode::light, AppearanceMode::dark}) {
        auto switched =
            co_await onWorker(pool, [this, mode] { return services_.setAppearance(mode); });
        if (!switched) {
            co_await onWorker(pool, restorePrior);
            co_return unexpected(RunError(switched.error()));
        }
        if (!co_await sleepFor(clock(), kAppearanceSettle)) {
            co_await onWorker(pool, restorePrior);
            co_return unexpected(RunError(Cancellation{}));
        }
        auto image = co_await captureOne(scope, target, layout);
        if (!image) {
            co_await onWorker(pool, restorePrior);
            co_return unexpected(RunError(image.error()));
        }
        shots.push_back(makeShot(code, label, mode, std::move(image.value()), scope));
        if (taken)
            taken(shots.back());
    }
    co_await onWorker(pool, restorePrior);
    noteIfNotFollowing(scope, target, shots);
    co_return shots;
}

// A window whose Dark capture equals its Light one didn't follow the switch: said at once and
// again with the saved line, instead of a wrong picture saved without a word.
void ContentView::noteIfNotFollowing(CaptureScope scope, const std::optional<CaptureTarget>& target,
                                     const Shots& shots) {
    if (scope != CaptureScope::singleWindow || !target || shots.size() != 2 ||
        !AppearanceFollow::looksSame(shots[0].image, shots[1].image)) {
        return;
    }
    progress.setStatusMessage(RunTexts::didNotFollowDark(target->appName) + ".");
    if (std::find(notFollowingDark.begin(), notFollowingDark.end(), target->appName) ==
        notFollowingDark.end()) {
        notFollowingDark.push_back(target->appName);
    }
}

// One appearance: the appearance calls hold the UI thread; a failed switch and a cancelled
// wait are passed over, and the picture is taken in whatever appearance the system has.
Task<Expected<Shots, RunError>> ContentView::captureOneAppearance(
    AppearanceMode mode, CaptureScope scope, std::optional<CaptureTarget> target,
    std::optional<CaptureEngine::FullDisplayLayout> layout, std::string code, std::string label,
    ShotTaken taken) {
    progress.setStatusMessage(RunTexts::capturingOneAppearance(rawString(mode), label));
    const std::optional<AppearanceMode> prior = services_.currentAppearance();
    (void)services_.setAppearance(mode);
    (void)co_await sleepFor(clock(), kAppearanceSettle);
    auto image = co_await captureOne(scope, target, layout);
    if (prior)
        (void)services_.setAppearance(*prior);
    if (!image)
        co_return unexpected(RunError(image.error()));
    Shots shots{makeShot(code, label, mode, std::move(image.value()), scope)};
    if (taken)
        taken(shots.back());
    co_return shots;
}

}  // namespace zd
