#include "control/LanguageLaunch.h"

#include <array>
#include <cctype>
#include <utility>
#include <vector>

namespace zd::LanguageLaunch {

namespace {

// The region a language is most often written for, where the code gives none.
constexpr std::array<std::pair<std::string_view, std::string_view>, 44> usualRegions{{
    {"ar", "EG"}, {"bg", "BG"}, {"ca", "ES"}, {"cs", "CZ"}, {"da", "DK"}, {"de", "DE"},
    {"el", "GR"}, {"en", "US"}, {"es", "ES"}, {"et", "EE"}, {"fa", "IR"}, {"fi", "FI"},
    {"fr", "FR"}, {"he", "IL"}, {"hi", "IN"}, {"hr", "HR"}, {"hu", "HU"}, {"id", "ID"},
    {"it", "IT"}, {"ja", "JP"}, {"ko", "KR"}, {"lt", "LT"}, {"lv", "LV"}, {"ms", "MY"},
    {"nb", "NO"}, {"nl", "NL"}, {"nn", "NO"}, {"no", "NO"}, {"pl", "PL"}, {"pt", "BR"},
    {"ro", "RO"}, {"ru", "RU"}, {"sk", "SK"}, {"sl", "SI"}, {"sr", "RS"}, {"sv", "SE"},
    {"th", "TH"}, {"tr", "TR"}, {"uk", "UA"}, {"vi", "VN"}, {"zh", "CN"}, {"eu", "ES"},
    {"gl", "ES"}, {"is", "IS"},
}};

std::vector<std::string> subtags(std::string_view code) {
    std::vector<std::string> parts;
    std::string current;
    for (char c : code) {
        if (c == '-' || c == '_') {
            parts.push_back(current);
            current.clear();
        } else {
            current.push_back(c);
        }
    }
    parts.push_back(current);
    return parts;
}

template <class Test>
bool allOf(const std::string& s, Test test) {
    if (s.empty())
        return false;
    for (char c : s) {
        if (!test(static_cast<unsigned char>(c)))
            return false;
    }
    return true;
}
bool isLetter(unsigned char c) {
    return std::isalpha(c) != 0;
}
bool isDigit(unsigned char c) {
    return std::isdigit(c) != 0;
}

std::string lower(std::string s) {
    for (char& c : s)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return s;
}
std::string upper(std::string s) {
    for (char& c : s)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return s;
}

// language_REGION, or empty.
std::string languageAndRegion(std::string_view languageCode) {
    const auto parts = subtags(languageCode);
    const std::string language = lower(parts.front());
    if (language.size() < 2 || language.size() > 3 || !allOf(language, isLetter))
        return {};
    std::string region;
    std::string script;
    for (std::size_t i = 1; i < parts.size(); ++i) {
        const std::string& part = parts[i];
        if (part.size() == 4 && allOf(part, isLetter) && script.empty()) {
            script = lower(part);
        } else if ((part.size() == 2 && allOf(part, isLetter)) ||
                   (part.size() == 3 && allOf(part, isDigit))) {
            region = upper(part);
            break;
        }
    }
    if (region.empty() && language == "zh" && script == "hant")
        region = "TW";
    if (region.empty()) {
        for (const auto& [lang, usual] : usualRegions) {
            if (lang == language)
                region = std::string(usual);
        }
    }
    if (region.empty())
        region = upper(language);
    return language + "_" + region;
}

}  // namespace

LanguageLaunchSettings appleArguments(const std::string& languageCode) {
    return {{"-AppleLanguages", "(" + languageCode + ")", "-AppleLocale", languageCode}, {}};
}

std::string posixLocaleName(std::string_view languageCode) {
    const std::string name = languageAndRegion(languageCode);
    return name.empty() ? name : name + ".UTF-8";
}

LanguageLaunchSettings posixEnvironment(const std::string& languageCode) {
    const std::string base = languageAndRegion(languageCode);
    if (base.empty())
        return {};
    std::string language = languageCode;
    for (char& c : language) {
        if (c == '-')
            c = '_';
    }
    if (language != base)
        language += ":" + base;
    const std::string locale = base + ".UTF-8";
    return {{}, {{"LC_ALL", locale}, {"LANGUAGE", language}, {"LANG", locale}}};
}

}  // namespace zd::LanguageLaunch
