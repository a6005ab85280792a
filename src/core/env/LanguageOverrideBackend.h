#pragma once
// The per-application language keys ("AppleLanguages", "AppleLocale") of an application's
// preferences domain, and how a language is handed to an application that starts.
// On macOS the keys live in the application's defaults and the start takes arguments; on
// Linux the keys are kept by this program per application and the start takes locale
// variables.

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "env/ToolResult.h"

namespace zd {

// What a start of an application gets so that it comes up in a language.
struct LanguageLaunchSettings {
    std::vector<std::string> arguments;
    std::vector<std::pair<std::string, std::string>> environment;
};

class LanguageOverrideBackend {
  public:
    virtual ~LanguageOverrideBackend() = default;

    // Runs the preferences tool with `arguments`, in its own argument forms:
    //   "write", domain, key, "-array", value…   "write", domain, key, "-string", value
    //   "read", domain, key                       "delete", domain, key
    // Blocks until it has ended. None when the tool couldn't be started.
    virtual std::optional<ToolResult> runDefaults(const std::vector<std::string>& arguments) = 0;

    // The user's preferred languages, most preferred first; may be empty.
    virtual std::vector<std::string> preferredLanguages() const = 0;

    // The arguments and environment that start an application in `languageCode`.
    virtual LanguageLaunchSettings launchSettings(const std::string& languageCode) const = 0;
};

}  // namespace zd
