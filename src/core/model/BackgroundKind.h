#pragma once
// What lies behind the composed window.

#include <string_view>

#include "model/EnumTraits.h"

namespace zd {

enum class BackgroundKind { transparent, color, image };

template <>
struct EnumTraits<BackgroundKind> {
    static constexpr std::array cases{BackgroundKind::transparent, BackgroundKind::color,
                                      BackgroundKind::image};
    static constexpr std::array<std::string_view, 3> rawValues{"transparent", "color", "image"};
};

}  // namespace zd
