// ContentView: the capture run, from the take button to the saved files and the clean-up.

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <limits>
#include <utility>

#include "control/LanguageRelauncher.h"
#include "env/DialogBackend.h"
#include "run/RunOutput.h"
#include "run/RunTexts.h"
#include "run/ShotPipeline.h"
#include "ui/ContentView.h"

namespace zd {

namespace {

using std::chrono::milliseconds;

constexpr double kSettleDelaySeconds = 1.2;
constexpr double kRelaunchTimeoutSeconds = 12.0;
// Shots still waiting for their picture when a language's captures begin: at most one
// language's pair. A pair is composed and encoded in well under the relaunch and settle waits
// of the next language, so a run with relaunches never waits on it; a walk faster than the
// encoder holds at most two pairs of raw captures (four, about 80 MB at 2880 × 1800) instead of
// every capture of the run.
constexpr std::size_t kMaxPendingShots = 2;

int enabledRowCount(const std::vector<CompositeEntry>& rows) {
    return static_cast<int>(
        std::count_if(rows.begin(), rows.end(), [](const CompositeEntry& r) { return r.enabled; }));
}

}  // namespace

void ContentView::takeShots() {
    if (captureDisabled())
        return;
    const auto cleanUpsBefore = cleanUps_;
    TaskHandle handle = spawn(runFullCapture());
    // A run that already passed its clean-up while starting has nothing left to cancel.
    if (cleanUps_ == cleanUpsBefore) {
        captureTask = handle;
        notices.announce(ViewChange::runState);
    }
}

std::optional<CaptureTarget> ContentView::allWindowsFallbackTarget() {
    auto row = std::find_if(compositeWindows.begin(), compositeWindows.end(),
                            [](const CompositeEntry& r) { return r.enabled; });
    if (row == compositeWindows.end())
        return std::nullopt;
    for (const Value& record : services_.windowList()) {
        const Value* number = record.find("kCGWindowNumber");
        if (!number || number->asNumber() != static_cast<double>(row->id))
            continue;
        const Value* pid = record.find("kCGWindowOwnerPID");
        const Value* owner = record.find("kCGWindowOwnerName");
        if (!pid || !owner || !pid->asNumber() || !owner->asString())
            return std::nullopt;
        const double pidValue = *pid->asNumber();
        if (pidValue < std::numeric_limits<std::int32_t>::min() ||
            pidValue > std::numeric_limits<std::int32_t>::max()) {
            return std::nullopt;
        }
        CaptureTarget target;
        target.id = row->id;
        target.appName = *owner->asString();
        const Value* name = record.find("kCGWindowName");
        target.title = name && name->asString() ? *name->asString() : "";
        target.pid = static_cast<std::int32_t>(pidValue);
        if (auto app = services_.runningApplication(target.pid)) {
            target.bundleId = app->bundleIdentifier;
            target.icon = app->icon;
        }
        return target;
    }
    return std::nullopt;
}

std::optional<CaptureTarget> ContentView::runTarget() {
    std::optional<CaptureTarget> target = selectedTarget();
    if (!target && captureScope == CaptureScope::allWindows)
        target = allWindowsFallbackTarget();
    return target;
}

Task<void> ContentView::runFullCapture() {
    // Before the run counts as running: a press may still end here without a trace.
    std::optional<CaptureTarget> target = runTarget();
    if (!target && captureScope == CaptureScope::singleWindow)
        co_return;

    if (!services_.saveFolderURL()) {
        chooseSaveFolder();
        if (!services_.saveFolderURL())
            co_return;
    }
    const std::optional<std::string> saveFolder = services_.saveFolderURL();
    if (!saveFolder)
        co_return;

    isWorking = true;
    notFollowingDark.clear();
    notices.announce(ViewChange::runState);
    progress.setShotsCompleted(0);
    progress.setShotsTotal(plannedShotCount());
    progress.setCaptureStage("");

    RunRestore restore;
    if (target) {
        restore.restoreBundleID = target->bundleId;
        restore.restoreAppName = target->appName;
        if (target->bundleId && !target->bundleId->empty())
            restore.revertBundleID = target->bundleId;
        menuBar.appName = target->appName;
    }
    const std::string startAppName = restore.restoreAppName.value_or("");

    // Learn the language; a first language that needs a relaunch makes the pose wait for it.
    std::string currentCode;
    bool skipInitialPose = false;
    if (captureScope == CaptureScope::singleWindow && target && target->bundleId &&
        !target->bundleId->empty()) {
        currentCode = services_.currentLanguageCode(*target->bundleId);
        skipInitialPose = !languages.empty() &&
                          !LanguageRelauncher::matchesLanguage(languages.front().code, currentCode);
    }
    if (!skipInitialPose) {
        co_await raiseAndCountdown(target, "Posing");
    } else if (services_.runningApplication(target->pid)) {
        services_.activateApplication(target->pid);
        (void)co_await sleepFor(clock(), milliseconds(400));
    }
    const bool firstPoseSkipped = skipInitialPose;

    if (co_await isCancelled()) {
        progress.setStatusMessage(RunTexts::stoppedBeforeCapture);
        cleanUp(restore);
        co_return;
    }

    if (target)
        co_await readMenuBar(*target);

    // Every shot is composed and encoded on a worker the moment it is captured, with the menu
    // titles of its language; the run keeps only the encoded pictures and writes them all at
    // its end. A language counts as collected once all its shots are taken.
    ShotPipeline pipeline(env_.pictureWorkers ? *env_.pictureWorkers : *env_.workers,
                          services_.shotEncoder(*this));
    std::optional<std::vector<std::string>> titles;
    const ShotTaken handOver = [&pipeline, &titles](const CapturedShot& shot) {
        CapturedShot taken = shot;
        taken.menuTitles = titles;
        pipeline.add(std::move(taken));
    };
    int collected = 0;
    auto collect = [&](const std::vector<CapturedShot>& shots) {
        collected += static_cast<int>(shots.size());
        progress.setShotsCompleted(progress.shotsCompleted() + static_cast<int>(shots.size()));
    };

    if (!languages.empty() && target && captureScope == CaptureScope::singleWindow) {
        const std::vector<LanguageSelection> walk = languages;  // walked as it stood
        for (std::size_t index = 0; index < walk.size(); ++index) {
            const LanguageSelection& language = walk[index];
            const int i = static_cast<int>(index) + 1;
            if (co_await isCancelled()) {
                failWalk(Cancellation{}, collected);
                co_await pipeline.drop();
                cleanUp(restore);
                co_return;
            }
            const bool matched = LanguageRelauncher::matchesLanguage(language.code, currentCode);
            const int n = static_cast<int>(languages.size());
            const std::string stage =
                matched ? RunTexts::capturingLanguage(language.label, i, n)
                        : RunTexts::switchingLanguage(startAppName, language.label, i, n);
            progress.setCaptureStage(stage);
            progress.setStatusMessage(stage);

            if (!matched) {
                auto relaunched = co_await services_.relaunch(
                    *target, language.code, kSettleDelaySeconds, kRelaunchTimeoutSeconds);
                if (!relaunched) {
                    if (relaunched.error().kind ==
                        LanguageRelauncher::Failure::Kind::missingBundleID) {
                        progress.setStatusMessage(RunTexts::missingBundleID(startAppName));
                    } else {
                        handleCaptureError(relaunched.error());
                    }
                    co_await pipeline.drop();
                    cleanUp(restore);
                    co_return;
                }
                target = std::move(relaunched.value());
                if (!co_await sleepFor(clock(), milliseconds(600))) {
                    failWalk(Cancellation{}, collected);
                    co_await pipeline.drop();
                    cleanUp(restore);
                    co_return;
                }
                if (((index == 0 && firstPoseSkipped) || countdownAfterRelaunch) &&
                    countdownSeconds >= 1) {
                    co_await raiseAndCountdown(target, "Posing " + language.label);
                    // Stopped after a later countdown: "Stopping…" stays as the last word.
                    if (co_await isCancelled()) {
                        co_await pipeline.drop();
                        cleanUp(restore);
                        co_return;
                    }
                }
            }

            progress.setCaptureStage(RunTexts::capturingLabel(language.label));
            // The menus as the target shows them in this language, for these pictures' bar.
            titles = co_await services_.readMenuTitles(*target);
            co_await pipeline.roomFor(kMaxPendingShots);
            auto shots =
                co_await captureCurrentLanguage(target, language.code, language.label, handOver);
            if (!shots) {
                failWalk(shots.error(), collected);
                co_await pipeline.drop();
                cleanUp(restore);
                co_return;
            }
            collect(shots.value());
            currentCode = language.code;
        }
    } else {
        const std::string label = captureScope == CaptureScope::allWindows
                                      ? RunTexts::windowCount(enabledRowCount(compositeWindows))
                                      : std::string("Current");
        progress.setCaptureStage(RunTexts::capturingLabel(label));
        if (target && captureScope == CaptureScope::singleWindow)
            titles = co_await services_.readMenuTitles(*target);
        auto shots = co_await captureCurrentLanguage(target, "", label, handOver);
        if (!shots) {
            failWalk(shots.error(), collected);
            co_await pipeline.drop();
            cleanUp(restore);
            co_return;
        }
        collect(shots.value());
    }

    // Ending well: the last pictures finished, everything written, then where it went.
    co_await pipeline.finished();
    const std::vector<EncodedShot> encoded = pipeline.take();
    std::string runRoot = *saveFolder;
    if (!saveCollected(encoded, runRoot)) {
        cleanUp(restore);
        co_return;
    }
    progress.setStatusMessage(RunTexts::savedWithNotFollowing(static_cast<int>(encoded.size()),
                                                              runRoot, notFollowingDark));
    if (captureScope == CaptureScope::allWindows)
        showAllWindowsCaptureSummary();
    lastRunRoot = runRoot;
    destinationMode = DestinationMode::group;
    notices.announce(ViewChange::lastRun);
    if (env_.dialogs)
        env_.dialogs->activateThisProgram();
    setPulseRevealButton(true);
    clock().callAfter(milliseconds(1600), guarded([this] { setPulseRevealButton(false); }));
    cleanUp(restore);
}

bool ContentView::saveCollected(const std::vector<EncodedShot>& collected, std::string& runRoot) {
    const std::string stamp = stampString(clock().wallNow());
    const std::string folderName =
        runFolderName(applicationWord(menuBar.appName), variantName, stamp);
    std::optional<std::filesystem::path> previousRoot;
    if (lastRunRoot)
        previousRoot = std::filesystem::path(*lastRunRoot);
    const Destination destination =
        resolveDestination(destinationMode, previousRoot, runRoot, folderName, variantName);
    runRoot = destination.runRoot.string();

    auto saved = services_.saveAll(*this, collected, runRoot, stamp, destination.variantPrefix);
    if (!saved) {
        progress.setStatusMessage(RunTexts::saveFailed(saved.error().localizedDescription));
        return false;
    }
    return true;
}

Task<void> ContentView::readMenuBar(const CaptureTarget& target) {
    const std::string appName = target.appName;
    auto first = co_await services_.captureMenuBarImage();
    if (first)
        statusItemsLeftFraction = first->statusItemsLeftFraction;
    std::vector<std::string> titles;
    if (first)
        titles = co_await services_.ocr(first->image, appName);
    auto kept = co_await services_.captureMenuBarImage();
    if (kept)
        statusItemsLeftFraction = kept->statusItemsLeftFraction;
    // An unreadable bar leaves what an earlier run found.
    if (!titles.empty())
        detectedMenuTitles = std::move(titles);
    if (kept)
        capturedMenuBarImage = std::move(kept->image);
    notices.announce(ViewChange::lastRun);
}

void ContentView::failWalk(const RunError& error, int collected) {
    if (isCancellation(error)) {
        progress.setStatusMessage(RunTexts::stoppedWithShots(collected));
    } else {
        handleCaptureError(error);
    }
}

void ContentView::cleanUp(const RunRestore& restore) {
    isWorking = false;
    progress.setCountdownRemaining(0);
    progress.setShotsCompleted(0);
    progress.setShotsTotal(0);
    progress.setCaptureStage("");
    captureTask.reset();
    ++cleanUps_;
    notices.announce(ViewChange::runState);
    if (restore.revertBundleID && !languages.empty()) {
        // Detached: the run ends now; the revert and the search for the window follow.
        ++revertsRunning_;
        clock().post([this, bundleID = *restore.revertBundleID, restore] {
            spawn(revertAndRestore(bundleID, restore));
        });
    } else {
        restoreSourceSelection(restore.restoreBundleID, restore.restoreAppName);
    }
}

Task<void> ContentView::revertAndRestore(std::string bundleID, RunRestore restore) {
    co_await services_.revertToOriginalLanguage(bundleID);
    --revertsRunning_;
    restoreSourceSelectionWithRetry(restore.restoreBundleID, restore.restoreAppName);
}

}  // namespace zd
