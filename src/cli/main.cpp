// zephyrdock, the command line: the same capture run as the application, without a window.
// Each subcommand lives in its own file; this one puts them together and maps the parser's
// outcome onto conventional exit codes (0 done, 1 failed, 2 bad arguments).
#include <CLI/CLI.hpp>
#include <filesystem>

#include "CheckCommand.h"
#include "CliSupport.h"
#include "PlanCommand.h"
#include "PreviewCommand.h"
#include "SettingsCommand.h"
#include "ShootCommand.h"
#include "SpacesCommand.h"
#include "StopRequest.h"
#include "TargetsCommand.h"
#include "common/PlatformEnvironment.h"

#ifndef ZD_VERSION
#define ZD_VERSION "unknown"
#endif

int main(int argc, char** argv) {
    using namespace zd::cli;
    CLI::App app{
        "Zephyrdock makes store and marketing screenshots of another application: in "
        "every language, in Light and in Dark, composed on a canvas of exact size.",
        "zephyrdock"};
    app.set_version_flag("--version", std::string("zephyrdock ") + ZD_VERSION);
    app.require_subcommand(1);
    app.fallthrough();

    Context context;
    std::string settingsFile;
    app.add_option("--settings-file", settingsFile,
                   "Use this settings file (JSON) instead of " +
                       zd::PlatformEnvironment::userSettingsPlace())
        ->check([](const std::string& path) {
            return path.empty() ? std::string("--settings-file needs the path of a file") : "";
        })
        ->each([&context](const std::string& path) {
            // Made absolute at once, so the folder it lies in is never an empty path.
            context.settingsFile = absolutePath(path);
        });

    addTargetsCommand(app, context);
    addSpacesCommand(app, context);
    addPlanCommand(app, context);
    addPreviewCommand(app, context);
    addShootCommand(app, context);
    addSettingsCommand(app, context);
    addCheckCommand(app, context);
    app.footer("Run \"zephyrdock <command> --help\" for the options of one command.");

    // Ctrl-C and SIGTERM only raise a flag for as long as a command runs: a run stops through
    // its own clean-up, and a private display started for the command is always ended.
    StopRequest stop;
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        // Help and version end well; every other parse failure is a usage error.
        return app.exit(error) == 0 ? exitSuccess : exitUsage;
    } catch (const std::exception& error) {
        // Caught so that everything a command started is unwound and ended.
        std::cerr << "zephyrdock: " << error.what() << "\n";
        return exitFailure;
    }
    return context.exitCode;
}
