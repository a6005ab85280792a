#pragma once
// The window's state owner as the live commands use it: the display session, the run's
// services over it, and a ContentView started from the stored settings, in that order of
// construction (and the reverse of destruction).

#include <memory>
#include <optional>
#include <ostream>
#include <string>

#include "DisplaySession.h"
#include "model/Expected.h"
#include "run/LiveRunServices.h"
#include "ui/ContentView.h"

namespace zd::cli {

// The live services, but with the save folder of a run given for this command only, so a
// --save-folder flag needs no write to the settings. The folder is used as given: one that
// can't be written ends in the run's own "Save failed: …".
class CommandLineRunServices final : public LiveRunServices {
  public:
    using LiveRunServices::LiveRunServices;
    std::optional<std::string> saveFolderOverride;

    std::optional<std::string> saveFolderURL() override {
        return saveFolderOverride ? saveFolderOverride : LiveRunServices::saveFolderURL();
    }
};

class LiveView {
  public:
    static Expected<std::unique_ptr<LiveView>, std::string> open(
        const DisplaySession::Options& options, std::ostream& err);

    DisplaySession& display() { return *display_; }
    Environment& environment() { return display_->environment(); }
    CommandLineRunServices& services() { return services_; }
    ContentView& view() { return view_; }

  private:
    explicit LiveView(std::unique_ptr<DisplaySession> display);

    std::unique_ptr<DisplaySession> display_;
    CommandLineRunServices services_;
    ContentView view_;
};

}  // namespace zd::cli
