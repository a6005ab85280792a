#pragma once
// Text without the ASCII white space around it: what tools print and what recognisers read
// carry stray blanks and line ends.

#include <string_view>

namespace zd {

inline bool isAsciiBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\v' || c == '\f';
}

inline std::string_view trimmedText(std::string_view text) {
    while (!text.empty() && isAsciiBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isAsciiBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

}  // namespace zd
