#pragma once
// The flags of `preview` and `shoot` that change what a run produces: each one overrides the
// stored setting of the same name for this command only. They are checked as a whole
// (contradictions are refused), applied to the window's state, and stored on request.

#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "model/Expected.h"

namespace CLI {
class App;
}

namespace zd {
class ContentView;
class SettingsStore;
}  // namespace zd

namespace zd::cli {

struct RunOverrides {
    std::string scope;
    std::vector<std::string> languages;
    std::vector<std::string> appearances;
    std::string sizePreset;
    std::string canvas;
    std::optional<int> countdown;
    std::optional<bool> countdownAfterRelaunch;
    std::optional<bool> shadow;
    std::string background;       // kind, for both appearances
    std::string backgroundColor;  // #RRGGBB
    std::string backgroundImage;
    std::optional<bool> menuBar;
    std::optional<bool> menuBarBackground;
    std::string clock;
    std::optional<int> battery;
    std::vector<std::string> hide;
    bool realAccessories = false;
    std::string destination;
    std::string variant;
    std::string into;  // the run folder a group joins
    std::string saveFolder;
    std::string storeName;      // mac-app-store or flathub
    std::string screenshotURL;  // where the Flathub export's images will be published

    // Adds the flags that change the pictures; `forRun` adds those of a run too (countdown,
    // window size, destination, variant, save folder). `plan` takes the same flags as `preview`.
    void addOptions(CLI::App& command, bool forRun);

    // Applies the flags to the window's state. Usage errors (contradictions, a value of the
    // wrong form, a canvas too large to draw, stored or given) come back as the text to print;
    // warnings about values replaced by their fallback are written to `warnings`.
    Expected<void, std::string> applyTo(ContentView& view, std::ostream& warnings) const;

    // Writes the flags that have a stored key to the store, as the window would store them.
    void store(const ContentView& view, SettingsStore& settings) const;
};

}  // namespace zd::cli
