#pragma once
// The running program's environment: every backend of this platform, built once by the face
// (the application or the command line) at start. Each platform supplies the implementation
// of this one class; nothing else asks which system it runs on.

#include <memory>
#include <optional>
#include <string>

#include "env/Environment.h"
#include "model/Expected.h"

namespace zd {

class ResourceBundle;
class RunJournal;
class RunJournalBackend;
class SettingsStore;

class PlatformEnvironment {
  public:
    struct Options {
        // A settings file (JSON), on every platform; empty for the user's own settings.
        std::string settingsPath;
        // Keeps the journal of what runs change (the appearance, language overrides), so a
        // start after a crash can put it back; it must outlive the environment.
        RunJournal* journal = nullptr;
    };

    // Where this platform keeps the journals of runs, so a start after a crash can find what a
    // dead run changed; nothing where the platform keeps none.
    static std::unique_ptr<RunJournalBackend> journalBackend();

    // The settings in the file at `path`, or the user's own settings when `path` is empty;
    // nothing when this platform can't find the user's own (a Linux user without a home).
    static std::unique_ptr<SettingsStore> openSettings(const std::string& path);
    // The user's own settings file, resolved now; nothing where the user's own settings are
    // no file (macOS keeps them in the defaults) or can't be found.
    static std::optional<std::string> userSettingsFile();
    // Where the user's own settings are kept, in words for the help.
    static std::string userSettingsPlace();

    // Connects to the window server. The text says why it couldn't.
    static Expected<std::unique_ptr<PlatformEnvironment>, std::string> create(
        const Options& options);
    ~PlatformEnvironment();
    PlatformEnvironment(const PlatformEnvironment&) = delete;
    PlatformEnvironment& operator=(const PlatformEnvironment&) = delete;

    // The face sets `dialogs` itself: the application shows windows, the command line doesn't.
    Environment& environment();
    // The folders where the resource bundle may lie, best first.
    ResourceBundle& resourceBundle();
    // The same environment without the journal: for putting back what an earlier run left,
    // which mustn't be noted as a change of this one.
    Environment environmentWithoutJournal();

  private:
    struct Impl;
    explicit PlatformEnvironment(std::unique_ptr<Impl> impl);
    std::unique_ptr<Impl> impl_;
};

}  // namespace zd
