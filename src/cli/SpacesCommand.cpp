#include "SpacesCommand.h"

#include <CLI/CLI.hpp>

#include "CliSupport.h"
#include "LiveView.h"
#include "TargetText.h"

namespace zd::cli {

namespace {

int listSpaces(Context& context, bool headless) {
    auto live = LiveView::open({headless, context.settingsFile, false}, *context.err);
    if (!live) {
        *context.err << "zephyrdock spaces: " << live.error() << "\n";
        return exitFailure;
    }
    ContentView& view = (*live)->view();
    view.reloadSpaces();
    if (view.availableSpaces.empty())
        *context.err << "The window manager tells no desktops.\n";
    for (const auto& space : view.availableSpaces)
        *context.out << padded(std::to_string(space.id), 12) << spaceText(space) << "\n";
    return exitSuccess;
}

}  // namespace

void addSpacesCommand(CLI::App& app, Context& context) {
    auto& headless = context.makeArguments<bool>();
    auto* command = app.add_subcommand("spaces", "List the desktops, with their numbers");
    command->footer(
        "Prints one line per desktop: its number, then \"Desktop N\" as the desktop picker shows "
        "it, with \"(current)\" after the one in use.");
    command->add_flag("--headless", headless,
                      "Look at a private headless display instead of the user's");
    command->callback([&context, &headless] { context.exitCode = listSpaces(context, headless); });
}

}  // namespace zd::cli
