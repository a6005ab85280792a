#include "ShootCommand.h"

#include <CLI/CLI.hpp>

#include "CliSupport.h"

namespace zd::cli {

// The backend this command drives is not part of this build yet: the command is listed with
// its help, and running it says so instead of pretending to work.
void addShootCommand(CLI::App& app, Context& context) {
    auto* command = app.add_subcommand(
        "shoot",
        "Capture the target in every planned language and appearance and save the pictures");
    command->footer(
        "Relaunches the target in each language, switches between Light and Dark, counts down, "
        "captures the window and writes the composed PNG files into a new run folder under the "
        "save folder. The system's appearance and the target's language are put back afterwards.");
    command->callback([&context] { context.exitCode = reportNotYetAvailable(context, "shoot"); });
}

}  // namespace zd::cli
