#pragma once
// Which menu titles a picture's bar carries, and where they come from: the application's own
// menus read through the accessibility interface in the language it runs in; where that read
// fails, the titles recognised on the captured system bar; then the user's configured titles;
// then default titles in the picture's language, so that an application without a menu bar
// is not shown under English menus in a German picture.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zd::MenuTitles {

// The titles of the first menu bar that has any, each trimmed, empty ones dropped. An empty
// list when the application has no menu bar; none when the menus couldn't be read.
std::optional<std::vector<std::string>> fromMenuBars(
    const std::optional<std::vector<std::vector<std::string>>>& bars);

// "File", "Edit", "View", "Window", "Help" in a language of the catalog, found by its code or,
// failing that, by the code's first part ("de-AT" is German). Empty for other languages.
const std::vector<std::string>& defaults(std::string_view languageCode);

// The titles for one picture, the first of these that has any:
//  1. `accessible`, the application's own (an empty list: it has no menu bar, so 2 is skipped);
//  2. `recognised`, read off the captured system bar, when `accessible` is none;
//  3. `configured`, the user's own;
//  4. the defaults of `languageCode`.
// Empty when none has any: the renderer then draws its own defaults.
std::vector<std::string> forPicture(const std::optional<std::vector<std::string>>& accessible,
                                    const std::vector<std::string>& recognised,
                                    const std::vector<std::string>& configured,
                                    std::string_view languageCode);

}  // namespace zd::MenuTitles
