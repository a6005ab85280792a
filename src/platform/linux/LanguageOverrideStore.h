#pragma once
// The per-application language keys on Linux, kept by this program: one small file per
// application under $XDG_CONFIG_HOME/zephyrdock/overrides/, answering the preferences tool's
// commands (write, read, delete) with its exit statuses and its printed forms, so the core
// reads them as it reads the tool's. At launch the language travels as locale variables.

#include <filesystem>
#include <mutex>

#include "env/LanguageOverrideBackend.h"

namespace zd::x11 {

class LanguageOverrideStore : public LanguageOverrideBackend {
  public:
    // `folder` empty: $XDG_CONFIG_HOME (or ~/.config) + /zephyrdock/overrides.
    explicit LanguageOverrideStore(std::filesystem::path folder = {});

    std::optional<ToolResult> runDefaults(const std::vector<std::string>& arguments) override;
    // LANGUAGE's list, else the locale of LC_ALL, LC_MESSAGES or LANG, as language codes.
    std::vector<std::string> preferredLanguages() const override;
    LanguageLaunchSettings launchSettings(const std::string& languageCode) const override;

    const std::filesystem::path& folder() const { return folder_; }

  private:
    struct Entry {
        std::string key;
        bool isArray = false;
        std::vector<std::string> values;
    };
    std::filesystem::path fileFor(const std::string& domain) const;
    std::vector<Entry> load(const std::filesystem::path& file) const;
    bool save(const std::filesystem::path& file, const std::vector<Entry>& entries) const;

    std::filesystem::path folder_;
    std::mutex mutex_;
};

}  // namespace zd::x11
