#include "run/JournaledBackends.h"

#include "control/AppearanceController.h"

namespace zd {

std::optional<ToolResult> JournaledAppearanceBackend::writeDarkMode(bool dark) {
    auto before = journal_.appearanceBefore();
    if (!before) {
        // The user's own mode, read before the first change; unknown, there is nothing to
        // put back later either.
        if (auto mode = AppearanceController::current(inner_)) {
            before = *mode == AppearanceController::Mode::dark;
            journal_.noteAppearanceBefore(*before);
        }
    }
    auto result = inner_.writeDarkMode(dark);
    if (before && *before == dark && result && result->exitStatus == 0)
        journal_.clearAppearance();
    return result;
}

std::optional<ToolResult> JournaledLanguageOverrideBackend::runDefaults(
    const std::vector<std::string>& arguments) {
    const bool touchesLanguage =
        arguments.size() >= 3 && (arguments[2] == LanguageRelauncher::languagesKey ||
                                  arguments[2] == LanguageRelauncher::localeKey);
    if (touchesLanguage && arguments[0] == "write")
        journal_.noteLanguageOverride(arguments[1]);
    auto result = inner_.runDefaults(arguments);
    // The override is gone once its second key is: clearOverride deletes the locale last.
    if (touchesLanguage && arguments[0] == "delete" &&
        arguments[2] == LanguageRelauncher::localeKey && result) {
        journal_.clearLanguageOverride(arguments[1]);
    }
    return result;
}

}  // namespace zd
