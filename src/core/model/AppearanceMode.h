#pragma once
// The two system appearances in which a shot can be taken.

#include <string_view>

#include "model/EnumTraits.h"

namespace zd {

enum class AppearanceMode { light, dark };

template <>
struct EnumTraits<AppearanceMode> {
    static constexpr std::array cases{AppearanceMode::light, AppearanceMode::dark};
    static constexpr std::array<std::string_view, 2> rawValues{"light", "dark"};
};

// "Light" or "Dark", as lists and chips show the mode.
constexpr std::string_view title(AppearanceMode mode) {
    return mode == AppearanceMode::light ? "Light" : "Dark";
}

}  // namespace zd
