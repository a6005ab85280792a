#include "ParallelShoot.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>

#include "CliSupport.h"
#include "ParallelRunner.h"
#include "common/FileSettingsStore.h"
#include "linux/ResourceBundleLocations.h"
#include "model/Preferences.h"
#include "model/ResourceBundle.h"
#include "run/LiveRunServices.h"
#include "run/ParallelRun.h"
#include "ui/ContentView.h"

namespace zd::cli {

namespace fs = std::filesystem;

namespace {

std::uint64_t availableMemory() {
    std::ifstream meminfo("/proc/meminfo");
    std::string key;
    std::uint64_t kilobytes = 0;
    std::string unit;
    while (meminfo >> key >> kilobytes >> unit) {
        if (key == "MemAvailable:")
            return kilobytes * 1024;
    }
    return ParallelRun::kSessionMemoryBytes;  // unknown: as if one session fits
}

}  // namespace

std::optional<int> shootInParallel(Context& context, const ShootArguments& args) {
    if (args.sessionReport)
        return std::nullopt;  // a session is one session, whatever it is given
    const bool asked = args.parallel.has_value();
    if (asked && *args.parallel > 1 && !args.headless) {
        *context.err << "zephyrdock shoot: --parallel " << *args.parallel
                     << " needs --headless: on the user's display a run is one target on one "
                        "desktop\n";
        return exitUsage;
    }
    if (!args.headless || (asked && *args.parallel <= 1))
        return std::nullopt;
    if (args.launch.empty()) {
        if (!asked)
            return std::nullopt;
        *context.err << "zephyrdock shoot: --parallel needs --launch \"COMMAND\": every session "
                        "starts its own instance of the target\n";
        return exitUsage;
    }
    auto store = openSettings(context);
    if (!store)
        return exitFailure;
    ResourceBundle bundle(resourceBundleCandidates());
    Environment none;
    LiveRunServices services(none);
    ContentView view(none, services, Preferences::load(*store, bundle));
    std::ostringstream warnings;  // told once: here if the run goes on in sessions
    if (!args.overrides.applyTo(view, warnings))
        return std::nullopt;
    std::string oneSession;
    if (view.captureScope != CaptureScope::singleWindow)
        oneSession = "all windows are shot in one pass";
    else if (view.store == Store::flathub)
        oneSession = "the Flathub export is made in one session";
    else if (view.languages.size() < 2)
        oneSession = "there are fewer than two languages";
    if (!oneSession.empty()) {
        if (asked)
            *context.err << "zephyrdock shoot: one session: " << oneSession << "\n";
        return std::nullopt;
    }
    const int languages = static_cast<int>(view.languages.size());
    const int sessions = std::min(
        languages, asked ? *args.parallel
                         : ParallelRun::defaultSessionCount(
                               languages, static_cast<int>(std::thread::hardware_concurrency()),
                               availableMemory()));
    if (sessions <= 1)
        return std::nullopt;
    *context.err << warnings.str();

    const fs::path saveFolder =
        args.overrides.saveFolder.empty()
            ? fs::path(Preferences::url(*store, Preferences::Keys::saveFolderURL).value_or(""))
            : fs::path(absolutePath(args.overrides.saveFolder));
    if (args.saveSettings)
        storeGivenSettings(context, args, view, *store);
    return ParallelRunner(context, args, view).run(saveFolder, sessions);
}

void storeGivenSettings(Context& context, const ShootArguments& args, const ContentView& view,
                        SettingsStore& store) {
    args.overrides.store(view, store);
    const auto* file = dynamic_cast<const FileSettingsStore*>(&store);
    if (file && file->setAside()) {
        *context.err << "zephyrdock: " << file->path()
                     << " couldn't be read as settings; it is kept as " << *file->setAside()
                     << "\n";
    }
    if (file && file->lastWriteError())
        *context.err << "zephyrdock: cannot save the settings: " << *file->lastWriteError() << "\n";
    else
        *context.err << "The given settings are stored for the next runs.\n";
}

}  // namespace zd::cli
