#pragma once
// Enumerations with text raw values: each enumeration lists its cases in declaration order
// together with their raw values, and these helpers give the raw value, the lookup by raw
// value (exact and case-sensitive) and the list of all cases.

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace zd {

// Specialised per enumeration with `cases` and `rawValues`, arrays of one length.
template <class E>
struct EnumTraits;

template <class E>
constexpr const auto& allCases() {
    return EnumTraits<E>::cases;
}

template <class E>
constexpr std::size_t caseIndex(E value) {
    const auto& cases = EnumTraits<E>::cases;
    for (std::size_t i = 0; i < cases.size(); ++i) {
        if (cases[i] == value) return i;
    }
    return 0;
}

template <class E>
constexpr std::string_view rawValue(E value) {
    return EnumTraits<E>::rawValues[caseIndex(value)];
}

template <class E>
std::string rawString(E value) {
    return std::string(rawValue(value));
}

template <class E>
constexpr std::optional<E> fromRawValue(std::string_view raw) {
    const auto& cases = EnumTraits<E>::cases;
    for (std::size_t i = 0; i < cases.size(); ++i) {
        if (EnumTraits<E>::rawValues[i] == raw) return cases[i];
    }
    return std::nullopt;
}

}  // namespace zd
