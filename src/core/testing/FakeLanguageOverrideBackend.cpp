#include "testing/FakeLanguageOverrideBackend.h"

#include "control/LanguageLaunch.h"

namespace zd::testing {

std::optional<ToolResult> FakeLanguageOverrideBackend::runDefaults(
    const std::vector<std::string>& arguments) {
    runs.push_back(arguments);
    std::string joined;
    for (const auto& argument : arguments)
        joined += (joined.empty() ? "" : " ") + argument;
    if (log)
        log->push_back("defaults " + joined);
    if (toolMissing)
        return std::nullopt;
    auto it = answers.find(joined);
    if (it != answers.end())
        return it->second;
    return ToolResult{};
}

LanguageLaunchSettings FakeLanguageOverrideBackend::launchSettings(
    const std::string& languageCode) const {
    return LanguageLaunch::appleArguments(languageCode);
}

}  // namespace zd::testing
