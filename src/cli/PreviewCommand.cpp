#include "PreviewCommand.h"

#include <CLI/CLI.hpp>

#include "CliSupport.h"

namespace zd::cli {

// The backend this command drives is not part of this build yet: the command is listed with
// its help, and running it says so instead of pretending to work.
void addPreviewCommand(CLI::App& app, Context& context) {
    auto* command = app.add_subcommand(
        "preview", "Render every planned picture with placeholders, without capturing anything");
    command->footer(
        "Writes one PNG per planned picture, composed as the run would compose it but with a drawn "
        "placeholder in place of the captured window, so the backgrounds, canvas and menu bar can "
        "be checked before a run.");
    command->callback([&context] { context.exitCode = reportNotYetAvailable(context, "preview"); });
}

}  // namespace zd::cli
