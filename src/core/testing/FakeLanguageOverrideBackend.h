#pragma once
// The preferences tool as a script: every run is recorded by its arguments, and answered from
// `answers` by the joined arguments ("read com.example AppleLanguages"), or with exit status
// 0 and no output when no answer is scripted. A missing tool is `toolMissing`.

#include <map>
#include <string>
#include <vector>

#include "control/LanguageLaunch.h"
#include "env/LanguageOverrideBackend.h"

namespace zd::testing {

class FakeLanguageOverrideBackend : public LanguageOverrideBackend {
  public:
    std::optional<ToolResult> runDefaults(const std::vector<std::string>& arguments) override {
        runs.push_back(arguments);
        std::string joined;
        for (const auto& argument : arguments)
            joined += (joined.empty() ? "" : " ") + argument;
        if (log)
            log->push_back("defaults " + joined);
        if (toolMissing)
            return std::nullopt;
        auto it = answers.find(joined);
        return it != answers.end() ? it->second : ToolResult{};
    }
    std::vector<std::string> preferredLanguages() const override { return preferred; }
    // The argument form, as on macOS.
    LanguageLaunchSettings launchSettings(const std::string& languageCode) const override {
        return LanguageLaunch::appleArguments(languageCode);
    }

    std::map<std::string, ToolResult> answers;
    bool toolMissing = false;
    std::vector<std::string> preferred;

    std::vector<std::vector<std::string>> runs;
    std::vector<std::string>* log = nullptr;
};

}  // namespace zd::testing
