#include "macos/SymbolNames.h"

#include <algorithm>

namespace zd::mac::SymbolNames {

std::vector<std::string> spellings(std::string_view name) {
    std::vector<std::string> names{std::string(name)};
    // "battery.25percent" (macOS 14 and later) was "battery.25" before.
    constexpr std::string_view prefix = "battery.";
    constexpr std::string_view suffix = "percent";
    if (name.size() > prefix.size() + suffix.size() && name.starts_with(prefix) &&
        name.ends_with(suffix)) {
        const auto level = name.substr(prefix.size(), name.size() - prefix.size() - suffix.size());
        if (std::all_of(level.begin(), level.end(), [](char c) { return c >= '0' && c <= '9'; }))
            names.push_back(std::string(prefix) + std::string(level));
    }
    return names;
}

}  // namespace zd::mac::SymbolNames
