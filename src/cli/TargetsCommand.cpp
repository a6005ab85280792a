#include "TargetsCommand.h"

#include <CLI/CLI.hpp>

#include "CliSupport.h"

namespace zd::cli {

// The backend this command drives is not part of this build yet: the command is listed with
// its help, and running it says so instead of pretending to work.
void addTargetsCommand(CLI::App& app, Context& context) {
    auto* command = app.add_subcommand(
        "targets", "List the windows that can be captured, with their window numbers");
    command->footer(
        "Prints one line per window of another application that a run can take as its target: "
        "window number, application and window title, front-most first.");
    command->callback([&context] { context.exitCode = reportNotYetAvailable(context, "targets"); });
}

}  // namespace zd::cli
