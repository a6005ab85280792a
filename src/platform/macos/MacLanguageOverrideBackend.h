#pragma once
// The application's "AppleLanguages" and "AppleLocale" preferences through /usr/bin/defaults,
// the user's languages from the system, and "-AppleLanguages (code)" arguments for a start.

#include "env/LanguageOverrideBackend.h"

namespace zd::mac {

class MacLanguageOverrideBackend : public LanguageOverrideBackend {
  public:
    std::optional<ToolResult> runDefaults(const std::vector<std::string>& arguments) override;
    std::vector<std::string> preferredLanguages() const override;
    LanguageLaunchSettings launchSettings(const std::string& languageCode) const override;
};

}  // namespace zd::mac
