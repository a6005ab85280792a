#pragma once
// What the subcommands of `zephyrdock` share: the exit codes, the options given before the
// subcommand, and the streams they write to (results on stdout, messages on stderr).

#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace CLI {
class App;
}

namespace zd {

class SettingsStore;

namespace cli {

// Exit codes, as the command line's callers expect them.
enum ExitCode : int {
    exitSuccess = 0,
    exitFailure = 1,       // the command ran and failed (a file that can't be written, …)
    exitUsage = 2,         // bad arguments: an unknown key, a value of the wrong form
    exitUnavailable = 69,  // the command exists but this build can't carry it out
    exitStopped = 130      // stopped with Ctrl-C (or SIGTERM), as shells report SIGINT
};

struct Context {
    std::optional<std::string> settingsFile;  // --settings-file; the user's settings otherwise
    int exitCode = exitSuccess;
    std::ostream* out = &std::cout;
    std::ostream* err = &std::cerr;
    // The arguments each subcommand binds its options to, kept for as long as the parse.
    std::vector<std::shared_ptr<void>> arguments;

    template <class T>
    T& makeArguments() {
        auto made = std::make_shared<T>();
        arguments.push_back(made);
        return *made;
    }
};

// Opens the settings file of --settings-file or the user's own settings (a file on Linux, the
// defaults on macOS); nothing, with a message on stderr, when there is no home folder to find
// them in.
std::unique_ptr<SettingsStore> openSettings(Context& context);
// Where the store keeps its settings: the file's path, or the platform's words for the user's
// own settings where they are no file.
std::string settingsLocation(const SettingsStore& store);

// The path made absolute against the working folder and normalised; as given if that fails.
std::string absolutePath(const std::string& path);

// One warning line on stderr when the settings file can't be used or read (every key then
// falls back), so that no command works from defaults in silence. Nothing for settings that
// are no file.
void warnAboutSettingsFile(Context& context, const SettingsStore& store);

// The text with its control characters shown as \xNN, so that a language code or a title
// echoed to a terminal can't move the cursor, clear the screen or start a line of its own.
std::string printable(std::string_view text);

// The text followed by blanks up to a column of the given width, counting characters rather
// than bytes (stored texts hold "×" and "…").
std::string padded(const std::string& text, std::size_t width);

}  // namespace cli
}  // namespace zd
