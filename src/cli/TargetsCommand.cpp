#include "TargetsCommand.h"

#include <CLI/CLI.hpp>

#include "CliSupport.h"
#include "LiveView.h"
#include "TargetText.h"
#include "capture/FullDisplayCapture.h"

namespace zd::cli {

namespace {

struct TargetsArguments {
    bool allWindows = false;
    bool headless = false;
};

int listTargets(Context& context, const TargetsArguments& args) {
    auto live = LiveView::open({args.headless, context.settingsFile, false}, *context.err);
    if (!live) {
        *context.err << "zephyrdock targets: " << live.error() << "\n";
        return exitFailure;
    }
    ContentView& view = (*live)->view();
    view.reloadSpaces();
    if (args.allWindows) {
        view.reloadCompositeWindows();
        if (view.compositeWindows.empty())
            *context.err << "No windows visible.\n";
        for (const auto& row : view.compositeWindows) {
            *context.out << padded(std::to_string(row.id), 12) << (row.enabled ? "[x] " : "[ ] ")
                         << CaptureEngine::label(row.appName, row.title) << "\n";
        }
        return exitSuccess;
    }
    view.reloadTargets();
    if (view.targets.empty())
        *context.err << "No windows of other applications to capture.\n";
    for (const auto& target : view.targets)
        *context.out << padded(std::to_string(target.id), 12) << targetText(target) << "\n";
    return exitSuccess;
}

}  // namespace

void addTargetsCommand(CLI::App& app, Context& context) {
    auto& args = context.makeArguments<TargetsArguments>();
    auto* command = app.add_subcommand(
        "targets", "List the windows that can be captured, with their window numbers");
    command->footer(
        "Prints one line per window of another application that a run can take as its target: "
        "window number, then application and window title as the source picker shows them, "
        "front-most first. \"shoot --target\" takes the number, the application's name or the "
        "window's title.");
    command->add_flag("--all-windows", args.allWindows,
                      "List the rows of a multiple-windows capture instead, ticked when they are "
                      "part of the composite");
    command->add_flag("--headless", args.headless,
                      "Look at a private headless display instead of the user's");
    command->callback([&context, &args] { context.exitCode = listTargets(context, args); });
}

}  // namespace zd::cli
