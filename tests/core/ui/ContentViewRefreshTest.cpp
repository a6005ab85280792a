// What keeps the window current: the reloads on activation and on the idle tick and their
// gates, the notices of reloads and of the run, and the target's language read off the UI
// thread.

#include <gtest/gtest.h>

#include "core/capture/CaptureTestSupport.h"
#include "core/run/RunFixture.h"
#include "testing/EventLog.h"
#include "testing/FakeRunServices.h"
#include "ui/ContentView.h"

namespace zd::testing {
namespace {

// Holds each job until the test finishes it, as a busy worker would.
class HeldWorkerPool : public WorkerPool {
  public:
    void run(std::function<void()> job, std::function<void()> done) override {
        held.emplace_back(std::move(job), std::move(done));
    }
    void finish(std::size_t i) {
        held[i].first();
        held[i].second();
    }
    std::vector<std::pair<std::function<void()>, std::function<void()>>> held;
};

class Refresh : public ::testing::Test {
  protected:
    Refresh() {
        fakes.addApp(10, "Pad", "org.pad");
        fakes.addApp(20, "Plain");  // no application identity
        fakes.windowList.setWindows(
            ValueArray{listed(1, 10, "Pad", "Doc"), listed(2, 20, "Plain")});
        fakes.spaces.displays = ValueArray{FakeSpacesBackend::displayWith({5})};
        fakes.spaces.active = 5;
        for (std::uint32_t window : {1, 2, 4})
            fakes.spaces.placeWindow(window, {5});
        env.workers = &pool;
    }
    std::size_t listReads() const { return fakes.windowList.requests.size(); }

    CaptureFakes fakes;
    HeldWorkerPool pool;
    Environment env = fakes.env();
    EventLog log;
    FakeRunServices services{log};
    std::unique_ptr<ContentView> view = std::make_unique<ContentView>(env, services);
    std::vector<ViewChange> heard;
    Subscription listening = view->notices.subscribe([this](ViewChange c) { heard.push_back(c); });
};

struct GateCase {
    const char* name;
    bool working;
    bool active;
    bool activation;  // else the idle tick
    std::size_t listReads;
    bool spacesRead;
};

class Gates : public Refresh, public ::testing::WithParamInterface<GateCase> {};

TEST_P(Gates, ReloadOnlyWhileIdleAndTheTickOnlyWhileActive) {
    const GateCase& c = GetParam();
    view->isWorking = c.working;
    if (c.activation)
        view->onActivated();
    else
        view->idleTick(c.active);
    EXPECT_EQ(listReads(), c.listReads);
    EXPECT_EQ(!view->availableSpaces.empty(), c.spacesRead);
}

INSTANTIATE_TEST_SUITE_P(
    ActivationAndTick, Gates,
    ::testing::Values(GateCase{"activation", false, true, true, 2, true},
                      GateCase{"activationDuringRun", true, true, true, 0, false},
                      GateCase{"tick", false, true, false, 2, false},  // no Spaces on a tick
                      GateCase{"tickInactive", false, false, false, 0, false},
                      GateCase{"tickDuringRun", true, true, false, 0, false}),
    [](const auto& param) { return std::string(param.param.name); });

TEST_F(Refresh, TimerTicksEverySecondUntilStoppedOrTheViewEnds) {
    bool active = true;
    view->startIdleTimer([&] { return active; });
    fakes.clock.advance(std::chrono::milliseconds(2500));
    EXPECT_EQ(listReads(), 4U);
    active = false;
    fakes.clock.advance(std::chrono::seconds(2));
    EXPECT_EQ(listReads(), 4U);
    view->stopIdleTimer();
    EXPECT_EQ(fakes.clock.pendingTimers(), 0U);
    view->startIdleTimer([] { return true; });
    view.reset();
    EXPECT_EQ(fakes.clock.pendingTimers(), 0U);
}

TEST_F(Refresh, ReloadsAnnounceOnlyWhatChanged) {
    view->onAppear();
    EXPECT_EQ(heard, (std::vector<ViewChange>{ViewChange::lists, ViewChange::selection,
                                              ViewChange::lists, ViewChange::lists}));
    heard.clear();
    view->idleTick(true);
    EXPECT_TRUE(heard.empty());  // the same windows again
    view->setSelectedTargetID(1);
    fakes.addApp(11, "Pad", "org.pad");  // relaunched under a new number
    fakes.windowList.setWindows(ValueArray{listed(4, 11, "Pad", "Doc")});
    heard.clear();
    view->reloadTargets();
    EXPECT_EQ(view->selectedTargetID, 4U);
    EXPECT_EQ(heard, (std::vector<ViewChange>{ViewChange::lists, ViewChange::selection}));
}

TEST_F(Refresh, TargetLanguageIsReadOnAWorkerAndAStaleAnswerIsDropped) {
    view->reloadTargets();
    view->languages = {{"fr", "French"}};
    view->setSelectedTargetID(1);
    view->setSelectedSpaceID(0);  // reloads; the selection stays, no new read
    view->setSelectedTargetID(std::nullopt);
    view->setSelectedTargetID(1);
    ASSERT_EQ(pool.held.size(), 2U);
    EXPECT_EQ(view->targetCurrentLangCode, "");
    services.languageCode = "de";
    pool.finish(1);
    EXPECT_EQ(view->targetCurrentLangCode, "de");
    EXPECT_TRUE(view->canRepeatAfterLanguage());
    services.languageCode = "ja";
    pool.finish(0);  // asked before the last change of selection
    EXPECT_EQ(view->targetCurrentLangCode, "de");

    heard.clear();
    view->setSelectedTargetID(2);  // no application identity: empty at once
    EXPECT_EQ(view->targetCurrentLangCode, "");
    EXPECT_EQ(heard, (std::vector<ViewChange>{ViewChange::selection, ViewChange::selection}));
    view->setSelectedTargetID(1);
    view.reset();
    pool.finish(2);  // an answer after the view has gone is dropped
}

using RunNotices = RunFixture;

TEST_F(RunNotices, RunAnnouncesItsStateItsResultAndThePulsesRiseAndFall) {
    std::vector<std::string> seen;
    auto listening = view->notices.subscribe([&](ViewChange c) {
        if (c == ViewChange::runState)
            seen.push_back(view->isWorking ? "working" : "idle");
        if (c == ViewChange::lastRun)
            seen.push_back("lastRun " + view->lastRunRoot.value_or("-"));
        if (c == ViewChange::revealPulse)
            seen.push_back((view->pulseRevealButton ? "pulse at " : "rest at ") +
                           seconds(clock.now()));
    });
    runToEnd();
    ASSERT_TRUE(view->lastRunRoot);
    const std::vector<std::string> expected{"working",
                                            "working",    // the task's handle is kept
                                            "lastRun -",  // the menu bar was read
                                            "lastRun " + *view->lastRunRoot,
                                            "pulse at 7.8s",
                                            "idle",
                                            "rest at 9.4s"};
    EXPECT_EQ(seen, expected);
}

}  // namespace
}  // namespace zd::testing
