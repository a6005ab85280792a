#pragma once
// The two ways a language reaches an application that starts: command-line arguments
// ("-AppleLanguages (de) -AppleLocale de") where the application reads its preferences from
// them, and the POSIX locale variables (LC_ALL, LANGUAGE, LANG) where it reads those.
// The language override backends hand one of these to the launch.

#include <string>
#include <string_view>

#include "env/LanguageOverrideBackend.h"

namespace zd::LanguageLaunch {

// "-AppleLanguages", "(" + code + ")", "-AppleLocale", code: the code as given.
LanguageLaunchSettings appleArguments(const std::string& languageCode);

// The locale name for a code: language and region joined by "_", ".UTF-8" behind, the usual
// region of the language when the code names none ("de" → "de_DE.UTF-8", "en-GB" →
// "en_GB.UTF-8", "zh-Hans" → "zh_CN.UTF-8"). Empty for a code that is no language code.
std::string posixLocaleName(std::string_view languageCode);

// LC_ALL and LANG set to posixLocaleName; LANGUAGE to the code with "_" for "-", followed by
// the locale's language_REGION where that differs, for catalogues named only by region.
// No variables at all for a code that is no language code.
LanguageLaunchSettings posixEnvironment(const std::string& languageCode);

}  // namespace zd::LanguageLaunch
