#include "ShootCommand.h"

#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <CLI/CLI.hpp>

#include <filesystem>
#include <sstream>

#include "CliSupport.h"
#include "ContactSheet.h"
#include "LiveView.h"
#include "OffscreenGui.h"
#include "ParallelShoot.h"
#include "ProgressPrinter.h"
#include "RunOverrides.h"
#include "SessionReport.h"
#include "SettingKeys.h"
#include "StopRequest.h"
#include "TargetLauncher.h"
#include "TargetText.h"
#include "env/ProcessBackend.h"
#include "env/SettingsStore.h"
#include "model/Preferences.h"
#include "run/RunOutput.h"

namespace zd::cli {

namespace {

using namespace std::chrono_literals;

// The flags checked against the stored settings without a display: a usage error or a missing
// save folder ends the command before anything starts.
int checkBeforeStart(Context& context, const ShootArguments& args) {
    auto store = openSettings(context);
    if (!store)
        return exitFailure;
    warnAboutSettingsFile(context, *store);
    Environment none;
    LiveRunServices services(none);
    ContentView probe(none, services);
    std::ostringstream ignored;  // warnings come once, from the live view
    if (auto applied = args.overrides.applyTo(probe, ignored); !applied) {
        *context.err << "zephyrdock shoot: " << applied.error() << "\n";
        return exitUsage;
    }
    const bool allWindows = args.overrides.scope.empty()
                                ? Preferences::captureScope(*store) == CaptureScope::allWindows
                                : args.overrides.scope == "all";
    if (args.target.empty() && args.launch.empty() && !allWindows) {
        *context.err << "zephyrdock shoot: no target: give --target (a window number, an "
                        "application name or a window title) or --launch \"COMMAND\"\n";
        return exitUsage;
    }
    if (args.overrides.saveFolder.empty() &&
        !Preferences::url(*store, Preferences::Keys::saveFolderURL)) {
        *context.err << "zephyrdock shoot: no save folder: give --save-folder DIR, or store one "
                        "with \"zephyrdock settings set saveFolderURL DIR\"\n";
        return exitFailure;
    }
    return exitSuccess;
}

// After a launch the multiple-windows list is read again, with the new program's windows ticked.
void tickLaunchedWindows(ContentView& view) {
    view.reloadCompositeWindows();
    const auto target = view.selectedTarget();
    for (auto& row : view.compositeWindows) {
        if (target && row.appName == target->appName)
            row.enabled = true;
    }
}

int shoot(Context& context, const ShootArguments& args) {
    if (int checked = checkBeforeStart(context, args); checked != exitSuccess)
        return checked;
    if (auto parallel = shootInParallel(context, args))
        return *parallel;
    StopRequest stop;
    bool stopped = false;
    auto stopSeen = [&] { return stopped = stopped || stop.take(); };

    auto live = LiveView::open({args.headless, context.settingsFile, args.reveal}, *context.err);
    if (!live) {
        *context.err << "zephyrdock shoot: " << live.error() << "\n";
        return exitFailure;
    }
    ContentView& view = (*live)->view();
    Environment& env = (*live)->environment();
    (void)args.overrides.applyTo(view, *context.err);  // checked above; now with warnings
    if (view.countdownSeconds > maxCountdownSeconds) {
        // Only a hand-edited file holds more; a stop would race down every second of it.
        *context.err << "zephyrdock: warning: the stored countdown of " << view.countdownSeconds
                     << " seconds is cut to " << maxCountdownSeconds << "\n";
        view.countdownSeconds = maxCountdownSeconds;
    }
    view.reloadSpaces();
    view.reloadCompositeWindows();

    std::optional<std::string> launchedBundle;
    pid_t launchedPid = 0;
    if (!args.launch.empty()) {
        auto launcher = TargetLauncher::start(args.launch, (*live)->display().childEnvironment());
        if (!launcher) {
            *context.err << "zephyrdock shoot: " << launcher.error() << "\n";
            return exitFailure;
        }
        auto& display = (*live)->display();
        display.notePrivateProcess(launcher->pid());
        *context.err << "Waiting for the first window of \"" << args.launch << "\"…\n";
        if (auto selected = launcher->selectFirstWindow(
                view, stopSeen, [&display] { return display.displayAnswers(); }, 60s);
            !selected) {
            *context.err << "zephyrdock shoot: " << selected.error() << "\n";
            launcher->end();  // a program that gave no window is not left running
            return stopped ? exitStopped : exitFailure;
        }
        if (auto target = view.selectedTarget())
            launchedBundle = target->bundleId;
        launchedPid = launcher->pid();
    } else if (!args.target.empty()) {
        view.reloadTargets();
        auto target = resolveTarget(view.targets, args.target);
        if (!target) {
            *context.err << "zephyrdock shoot: " << target.error() << "\n";
            return exitFailure;
        }
        view.selectedTargetID = target->id;
    }
    if (auto target = view.selectedTarget())
        *context.err << "Target: " << target->id << "  " << targetText(*target) << "\n";
    if (launchedPid > 0 && view.captureScope == CaptureScope::allWindows)
        tickLaunchedWindows(view);

    if (args.saveSettings)
        storeGivenSettings(context, args, view, *env.settings);
    if (!args.overrides.saveFolder.empty())
        (*live)->services().saveFolderOverride = absolutePath(args.overrides.saveFolder);
    // Grouping across runs of this command: the latest run folder of the same application.
    if (view.destinationMode == DestinationMode::group && !view.lastRunRoot) {
        const auto folder = (*live)->services().saveFolderURL();
        const auto target = view.runTarget();
        const std::string word = applicationWord(target ? target->appName : view.menuBar.appName);
        const auto found = folder ? newestRunFolder(*folder, word) : std::nullopt;
        if (found)
            view.lastRunRoot = found->string();
    }
    if (view.destinationMode == DestinationMode::group && view.lastRunRoot)
        *context.err << "Joining " << *view.lastRunRoot << "\n";

    // The target as the run starts, for the words after it (its window may be gone by then).
    const auto chosen = view.runTarget();
    std::string lastShown;
    {
        winsize terminal{};
        const bool onTerminal = isatty(STDERR_FILENO) != 0;
        if (onTerminal)
            ioctl(STDERR_FILENO, TIOCGWINSZ, &terminal);
        // A session of a parallel run reports to the run that started it instead.
        std::optional<ProgressPrinter> printer;
        std::optional<SessionReporter> reporter;
        if (args.sessionReport)
            reporter.emplace(view.progress, *context.out, [&view] { return view.isWorking; });
        else
            printer.emplace(
                view.progress, *context.err, onTerminal, [&view] { return view.isWorking; },
                terminal.ws_col);
        view.progress.onCancel = [&view] { view.cancelCapture(); };
        view.takeShots();
        processEventsUntil(
            [&] {
                if (stop.take() && !stopped) {
                    stopped = true;
                    if (printer)
                        printer->stopping();
                    view.progress.onCancel();  // the Stop button, on this (the UI) thread
                }
                return !view.isWorking && (!view.captureTask || view.captureTask->isDone());
            },
            std::chrono::hours(24));
        if (printer)
            lastShown = printer->shown();
    }

    const bool saved = view.lastRunRoot && view.progress.statusMessage().rfind("Saved ", 0) == 0;
    std::string status = view.progress.statusMessage();
    if (status.rfind("Capture failed: ", 0) == 0) {
        // The system's generic words hide the two usual causes on Linux; name them.
        const bool targetGone =
            chosen && (chosen->bundleId && !chosen->bundleId->empty()
                           ? env.processes->runningApplications(*chosen->bundleId).empty()
                           : !env.processes->runningApplication(chosen->pid));
        if (!(*live)->display().displayAnswers())
            status = "Capture failed: the display stopped answering during the run.";
        else if (targetGone)
            status = "Capture failed: " + chosen->appName + " quit during the run.";
    } else if (status.rfind("Save failed: ", 0) == 0) {
        if (auto folder = (*live)->services().saveFolderURL())
            status += " (saving under " + *folder + ")";
    }
    if (lastShown != printable(status))
        *context.err << printable(status) << "\n";
    if (args.sessionReport) {
        *context.out << SessionReport::line("status", {status}) << "\n"
                     << SessionReport::line("app", {view.menuBar.appName}) << "\n";
        for (const auto& name : view.notFollowingDark)
            *context.out << SessionReport::line("notdark", {name}) << "\n";
        if (saved)
            *context.out << SessionReport::line("saved", {*view.lastRunRoot}) << "\n";
        *context.out << std::flush;
    }
    if (saved && args.reveal)
        view.revealInFinder(*view.lastRunRoot);
    // The target goes back to its own language after the run, whatever the scope; wait for
    // that, and for its window, before leaving. The revert itself always runs to its end (its
    // own waits bound it): leaving between its end of the target and the restart would leave
    // the target closed. A stop only cuts short the search for its window afterwards.
    if (view.revertInProgress()) {
        const std::string appName = chosen ? chosen->appName : view.menuBar.appName;
        *context.err << "Putting " << appName << " back in its own language\u2026\n";
        view.selectedTargetID.reset();
        processEventsUntil(
            [&] {
                if (stop.take()) {
                    if (!view.revertInProgress())
                        return true;
                    *context.err << "Still waiting for " << appName
                                 << " to quit and start again in its own language; it is "
                                    "not left closed\u2026\n";
                }
                // A session of a parallel run ends its target with its display: the target
                // needn't be found again, only its language put back to its end.
                return !view.revertInProgress() &&
                       (args.sessionReport || view.selectedTargetID.has_value());
            },
            30s);
    }
    if (launchedBundle && (*live)->display().isHeadless()) {
        for (const auto& app : env.processes->runningApplications(*launchedBundle))
            env.processes->terminate(app.pid);
    }
    if (launchedPid > 0 && (*live)->display().isHeadless()) {
        // The started program is this process's child: collect it once it has ended (here, or
        // earlier when a language switch relaunched it).
        processEventsUntil([&] { return waitpid(launchedPid, nullptr, WNOHANG) != 0; }, 3s);
    }

    if (!saved)
        return stopped ? exitStopped : exitFailure;
    if (args.contactSheet) {
        const std::filesystem::path root(*view.lastRunRoot);
        if (!writeContactSheet(root, root.filename().string(), runPictures(root, view.languages)))
            *context.err << "zephyrdock shoot: cannot write " << (root / "index.html") << "\n";
    }
    if (!args.sessionReport)
        *context.out << *view.lastRunRoot << "\n";
    return exitSuccess;
}

}  // namespace

void addShootCommand(CLI::App& app, Context& context) {
    auto& args = context.makeArguments<ShootArguments>();
    auto* command = app.add_subcommand(
        "shoot",
        "Capture the target in every planned language and appearance and save the pictures");
    command->footer(
        "Relaunches the target in each language, switches between Light and Dark, counts down, "
        "captures the window and writes the composed PNG files into a new run folder under the "
        "save folder (or, with --destination group, into an earlier one). The system's appearance "
        "and the target's language are put back afterwards.\n"
        "Every option overrides the stored setting for this run only, unless --save-settings "
        "(the menu bar's details, the fill colour, destination and variant have no stored "
        "setting and are never stored). "
        "Progress goes to stderr; the run folder is printed on stdout. Ctrl-C stops the run as "
        "the Stop button does. Exit status: 0 saved, 1 failed, 2 bad arguments, 130 stopped.");
    auto* target = command->add_option(
        "--target", args.target, "The window: its number, application name or title (see targets)");
    command
        ->add_option("--launch", args.launch,
                     "Start this command and take its first window as the target (on a private "
                     "display it is ended afterwards)")
        ->excludes(target);
    args.overrides.addOptions(*command, true);
    command->add_flag("--headless", args.headless,
                      "Run on a private headless display even when the user's answers");
    command
        ->add_option(
            "--parallel", args.parallel,
            "With --headless and --launch: split the languages over N private sessions at once, "
            "each with its own display, D-Bus, settings, appearance and instance of the target; "
            "the pictures land in one run folder under the names one session would give them. "
            "Default with --headless: one session per core and one more, no more than the "
            "languages and than the free memory carries (about 450 MB a session); always 1 on "
            "the user's display. 1: one session, as without the option. Ctrl-C stops every "
            "session, and a session that fails fails the whole run; either way nothing is "
            "written")
        ->check(CLI::Range(1, 64));
    command->add_flag("--session-report", args.sessionReport)->group("");
    command->add_flag("--save-settings", args.saveSettings,
                      "Store the given options as the settings of the next runs");
    command->add_flag("--reveal", args.reveal,
                      "Open the run folder in the file manager once the pictures are saved");
    command->add_flag("--contact-sheet", args.contactSheet,
                      "Write an index.html of the pictures into the run folder");
    command->callback([&context, &args] { context.exitCode = shoot(context, args); });
}

}  // namespace zd::cli
