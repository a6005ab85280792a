#pragma once
// One language of a run, and the built-in list of languages.

#include <optional>
#include <string>
#include <vector>

#include "model/Value.h"

namespace zd {

struct LanguageSelection {
    std::string code;   // as passed to the target's language argument, e.g. "pt-BR"
    std::string label;  // English name, shown in chips and used in file and folder names

    friend bool operator==(const LanguageSelection&, const LanguageSelection&) = default;

    // The structured form: exactly the keys "code" and "label", both text, both required.
    Value encoded() const;
    static std::optional<LanguageSelection> decoded(const Value& value);
};

namespace LanguageCatalog {
// The built-in languages, in the order every list shows them.
const std::vector<LanguageSelection>& common();
// The catalog's entry for a code, or the code standing as its own label.
LanguageSelection selection(const std::string& code);
}  // namespace LanguageCatalog

}  // namespace zd

template <>
struct std::hash<zd::LanguageSelection> {
    std::size_t operator()(const zd::LanguageSelection& s) const noexcept {
        return std::hash<std::string>()(s.code) ^ (std::hash<std::string>()(s.label) << 1);
    }
};
