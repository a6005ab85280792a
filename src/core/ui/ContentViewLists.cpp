// ContentView: the three live lists of the window, refreshed from the system, and what keeps
// them and the target's language current.

#include <chrono>
#include <memory>
#include <utility>

#include "capture/Spaces.h"
#include "capture/TargetLists.h"
#include "ui/ContentView.h"

namespace zd {

namespace {

// Field by field: a target's own equality is its window number alone, but a new title must
// reach the picker too.
bool sameTargets(const std::vector<CaptureTarget>& a, const std::vector<CaptureTarget>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const CaptureTarget& x, const CaptureTarget& y) {
                          return x.id == y.id && x.appName == y.appName && x.title == y.title &&
                                 x.pid == y.pid && x.bundleId == y.bundleId;
                      });
}

}  // namespace

void ContentView::announceListsAndSelection(const std::vector<CaptureTarget>& targetsBefore,
                                            const std::vector<CompositeEntry>& rowsBefore,
                                            const std::vector<Spaces::Info>& spacesBefore,
                                            std::optional<std::uint32_t> selectedBefore,
                                            std::uint64_t spaceBefore) {
    if (!sameTargets(targets, targetsBefore) || compositeWindows != rowsBefore ||
        availableSpaces != spacesBefore) {
        notices.announce(ViewChange::lists);
    }
    if (selectedTargetID != selectedBefore || selectedSpaceID != spaceBefore)
        notices.announce(ViewChange::selection);
    if (selectedTargetID != selectedBefore)
        refreshTargetLanguage();
}

void ContentView::reloadSpaces() {
    const auto spacesBefore = availableSpaces;
    const auto spaceBefore = selectedSpaceID;
    Spaces::reloadSpaces(env_.spaces, availableSpaces, selectedSpaceID);
    announceListsAndSelection(targets, compositeWindows, spacesBefore, selectedTargetID,
                              spaceBefore);
}

void ContentView::reloadTargets() {
    const auto targetsBefore = targets;
    const auto selectedBefore = selectedTargetID;
    TargetLists::reloadTargets(env_, selectedSpaceID, targets, selectedTargetID);
    announceListsAndSelection(targetsBefore, compositeWindows, availableSpaces, selectedBefore,
                              selectedSpaceID);
}

void ContentView::reloadCompositeWindows() {
    const auto rowsBefore = compositeWindows;
    TargetLists::reloadCompositeWindows(env_, selectedSpaceID, compositeWindows);
    announceListsAndSelection(targets, rowsBefore, availableSpaces, selectedTargetID,
                              selectedSpaceID);
}

void ContentView::onAppear() {
    reloadSpaces();
    reloadTargets();
    reloadCompositeWindows();
    progress.onCancel = [this] { cancelCapture(); };
    refreshTargetLanguage();
}

void ContentView::onActivated() {
    // A run relaunches its target; the lists stand still meanwhile.
    if (isWorking)
        return;
    reloadSpaces();
    reloadTargets();
    reloadCompositeWindows();
}

void ContentView::idleTick(bool applicationIsActive) {
    // The Spaces are left to the rarer events.
    if (!applicationIsActive || isWorking)
        return;
    reloadTargets();
    reloadCompositeWindows();
}

void ContentView::startIdleTimer(std::function<bool()> applicationIsActive) {
    stopIdleTimer();
    applicationIsActive_ = std::move(applicationIsActive);
    scheduleIdleTick();
}

void ContentView::scheduleIdleTick() {
    idleTimer_ = clock().callAfter(std::chrono::seconds(1), guarded([this] {
                                       idleTimer_.reset();
                                       idleTick(applicationIsActive_());
                                       scheduleIdleTick();
                                   }));
}

void ContentView::stopIdleTimer() {
    if (idleTimer_)
        clock().cancel(*idleTimer_);
    idleTimer_.reset();
}

void ContentView::setTargetCurrentLangCode(std::string code) {
    if (code == targetCurrentLangCode)
        return;
    targetCurrentLangCode = std::move(code);
    notices.announce(ViewChange::selection);
}

void ContentView::refreshTargetLanguage() {
    const std::uint64_t read = ++languageReads_;
    const auto target = selectedTarget();
    if (!target || !target->bundleId || target->bundleId->empty()) {
        setTargetCurrentLangCode("");
        return;
    }
    const std::string bundleID = *target->bundleId;
    if (!env_.workers) {  // an environment without workers reads on this thread
        setTargetCurrentLangCode(services_.currentLanguageCode(bundleID));
        return;
    }
    auto answer = std::make_shared<std::string>();
    env_.workers->run([answer, bundleID,
                       &services = services_] { *answer = services.currentLanguageCode(bundleID); },
                      guarded([this, answer, read] {
                          if (read == languageReads_)  // else the selection has changed since
                              setTargetCurrentLangCode(*answer);
                      }));
}

}  // namespace zd
