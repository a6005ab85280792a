#include "macos/MacLanguageOverrideBackend.h"

#import <Foundation/Foundation.h>

#include "control/LanguageLaunch.h"
#include "macos/MacToolRunner.h"
#include "macos/ObjectValues.h"

namespace zd::mac {

std::optional<ToolResult> MacLanguageOverrideBackend::runDefaults(
    const std::vector<std::string>& arguments) {
    return runTool("/usr/bin/defaults", arguments);
}

std::vector<std::string> MacLanguageOverrideBackend::preferredLanguages() const {
    std::vector<std::string> languages;
    for (NSString* language in [NSLocale preferredLanguages])
        languages.push_back(textOf(language));
    return languages;
}

LanguageLaunchSettings MacLanguageOverrideBackend::launchSettings(
    const std::string& languageCode) const {
    return LanguageLaunch::appleArguments(languageCode);
}

}  // namespace zd::mac
