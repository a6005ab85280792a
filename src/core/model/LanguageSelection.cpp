#include "model/LanguageSelection.h"

namespace zd {

Value LanguageSelection::encoded() const {
    return ValueDictionary{{"code", code}, {"label", label}};
}

std::optional<LanguageSelection> LanguageSelection::decoded(const Value& value) {
    const Value* code = value.find("code");
    const Value* label = value.find("label");
    if (!code || !label || !code->asString() || !label->asString()) return std::nullopt;
    return LanguageSelection{*code->asString(), *label->asString()};
}

namespace LanguageCatalog {

const std::vector<LanguageSelection>& common() {
    static const std::vector<LanguageSelection> list{
        {"en", "English"},
        {"es", "Spanish"},
        {"fr", "French"},
        {"de", "German"},
        {"it", "Italian"},
        {"pt-BR", "Portuguese (Brazil)"},
        {"ja", "Japanese"},
        {"ko", "Korean"},
        {"zh-Hans", "Chinese (Simplified)"},
        {"zh-Hant", "Chinese (Traditional)"},
        {"nl", "Dutch"},
        {"sv", "Swedish"},
        {"ru", "Russian"},
        {"tr", "Turkish"},
        {"pl", "Polish"},
        {"ar", "Arabic"},
    };
    return list;
}

LanguageSelection selection(const std::string& code) {
    for (const auto& entry : common()) {
        if (entry.code == code) return entry;
    }
    return {code, code};
}

}  // namespace LanguageCatalog
}  // namespace zd
