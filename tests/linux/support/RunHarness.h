#pragma once
// A capture run over the real Linux backends inside a headless session, driven as the faces
// drive it: the window's state owner on the live services, the Qt event loop pumping the run's
// timers and workers, a dialog backend that records.

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "common/PlatformEnvironment.h"
#include "run/LiveRunServices.h"
#include "testing/EventLog.h"
#include "testing/FakeDialogBackend.h"
#include "ui/ContentView.h"

namespace zd::testing {

// Drawing needs a GUI application object; it draws offscreen, not on the session's display.
void ensureGuiApplication();

// The menu titles text recognition (tesseract) reads on a bar, without `appName`.
std::vector<std::string> menuTitlesOn(const Image& bar, const std::string& appName);

// Runs the Qt event loop until `done` holds or `limit` has passed; false on the time-out.
bool runEventsUntil(const std::function<bool()>& done, std::chrono::seconds limit);

class RunHarness {
  public:
    // The environment of the current DISPLAY, with its settings in `settingsFile` and the run
    // folders going to `saveFolder`.
    static std::unique_ptr<RunHarness> create(const std::string& settingsFile,
                                              const std::string& saveFolder);

    Environment& env() { return platform_->environment(); }
    ContentView& view() { return *view_; }
    // Selects the first target of this process; false if none came up in time.
    bool selectTargetOf(int pid);
    // Starts the run and pumps events until it has ended; false on the time-out.
    bool takeShotsAndWait(std::chrono::seconds limit = std::chrono::seconds(180));

  private:
    RunHarness() = default;
    std::unique_ptr<PlatformEnvironment> platform_;
    EventLog log_;
    std::unique_ptr<FakeDialogBackend> dialogs_;
    std::unique_ptr<LiveRunServices> services_;
    std::unique_ptr<ContentView> view_;
};

}  // namespace zd::testing
