#include "SpacesCommand.h"

#include <CLI/CLI.hpp>

#include "CliSupport.h"

namespace zd::cli {

// The backend this command drives is not part of this build yet: the command is listed with
// its help, and running it says so instead of pretending to work.
void addSpacesCommand(CLI::App& app, Context& context) {
    auto* command = app.add_subcommand("spaces", "List the desktops and tell which one is current");
    command->footer(
        "Prints one line per desktop (Space): its id, the number shown to the user, and whether it "
        "is the active one.");
    command->callback([&context] { context.exitCode = reportNotYetAvailable(context, "spaces"); });
}

}  // namespace zd::cli
