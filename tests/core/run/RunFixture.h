#pragma once
// A ContentView wired to scripted run services, dialogs and screens, a manual clock and an
// inline worker pool, all writing into one event log. The default script: target Notes
// (window 7, pid 42, com.example.notes) in English, save folder /shots, Light before the run.

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "testing/EventLog.h"
#include "testing/FakeDialogBackend.h"
#include "testing/FakeRunServices.h"
#include "testing/FakeScreenBackend.h"
#include "testing/ManualClock.h"
#include "ui/ContentView.h"

namespace zd::testing {

using namespace std::chrono_literals;

class RunFixture : public ::testing::Test {
  protected:
    RunFixture() {
        services.saveFolder = "/shots";
        services.runningPids = {42};
        services.targets = {notes};
        view = std::make_unique<ContentView>(env, services);
        view->targets = {notes};
        view->selectedTargetID = 7;
        view->languages = {{"de", "German"}, {"fr", "French"}};
        log.watch(clock);
        log.watch(view->progress);
    }

    // Presses the take button and lets the whole run and its aftermath play out.
    void runToEnd() {
        view->takeShots();
        ASSERT_TRUE(clock.runUntilIdle());
    }

    // Presses the take button, stops the run at `at`, and lets it end.
    void stopAt(Nanos at) {
        view->takeShots();
        clock.advance(at);
        view->cancelCapture();
        ASSERT_TRUE(clock.runUntilIdle());
    }

    // The entries that start with one of the prefixes, in order.
    std::vector<std::string> only(const std::vector<std::string>& prefixes) const {
        std::vector<std::string> kept;
        for (const auto& entry : log.entries()) {
            if (std::any_of(prefixes.begin(), prefixes.end(),
                            [&](const std::string& p) { return entry.rfind(p, 0) == 0; })) {
                kept.push_back(entry);
            }
        }
        return kept;
    }

    bool logged(const std::string& prefix) const { return !only({prefix}).empty(); }

    // The saved shots as "code mode", " full" after a shot of the whole display.
    std::vector<std::string> savedShots() const {
        std::vector<std::string> shots;
        for (const auto& shot : services.savedShots) {
            shots.push_back(shot.languageCode + " " + rawString(shot.mode) +
                            (shot.isFullDisplay ? " full" : ""));
        }
        return shots;
    }

    // After a run that stopped or failed, begun in Dark: no file, Dark and the language back.
    void expectNothingSavedAndAllPutBack() const {
        EXPECT_FALSE(logged("saveAll"));
        EXPECT_EQ(services.systemAppearance, AppearanceMode::dark);
        EXPECT_TRUE(logged("revertToOriginalLanguage com.example.notes"));
        EXPECT_FALSE(view->isWorking);
        EXPECT_EQ(view->destinationMode, DestinationMode::newDestination);
    }

    EventLog log;
    ManualClock clock;
    LoggingWorkerPool pool{log};
    FakeRunServices services{log};
    FakeDialogBackend dialogs{log};
    FakeScreenBackend screens;
    Environment env{.clock = &clock, .workers = &pool, .screens = &screens, .dialogs = &dialogs};
    CaptureTarget notes{.id = 7,
                        .appName = "Notes",
                        .title = "Untitled",
                        .pid = 42,
                        .bundleId = "com.example.notes"};
    std::unique_ptr<ContentView> view;
};

}  // namespace zd::testing
