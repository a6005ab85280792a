#pragma once
// The <screenshots> element of an application's AppStream metainfo for the pictures of a
// Flathub export: one <screenshot> per picture (Light, Dark, …), the first marked default,
// each with an image per language (xml:lang) and one without a language for the stores that
// don't match one; captions are left empty for the user to write.

#include <string>
#include <vector>

namespace zd::AppStreamScreenshots {

// One saved picture.
struct Picture {
    std::string relativePath;  // inside the run folder, "/"-separated: "de/light.png"
    std::string languageCode;  // empty: the target's own language
    std::string name;          // which picture it is across languages: "light", "Sidebar-dark"
    int width = 0;
    int height = 0;
};

// A language code as metainfo writes it: "pt-BR" becomes "pt_BR".
std::string metainfoLanguage(const std::string& code);

// The snippet, indented for a <component>, with each image's URL the base (ending in "/" or
// not) followed by its path, every path segment percent-encoded. Pictures keep their order;
// a picture's first language also gives its image without a language.
std::string xml(const std::vector<Picture>& pictures, const std::string& baseURL);

// Where the images go until the user says: their own site's folder replaces this.
inline constexpr const char* kPlaceholderBaseURL = "https://example.org/screenshots/";

}  // namespace zd::AppStreamScreenshots
