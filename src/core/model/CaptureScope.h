#pragma once
// How much of the screen one shot composes.

#include <string_view>

#include "model/EnumTraits.h"

namespace zd {

enum class CaptureScope { singleWindow, allWindows };

template <>
struct EnumTraits<CaptureScope> {
    static constexpr std::array cases{CaptureScope::singleWindow, CaptureScope::allWindows};
    static constexpr std::array<std::string_view, 2> rawValues{"single", "all"};
};

constexpr std::string_view tileTitle(CaptureScope scope) {
    return scope == CaptureScope::singleWindow ? "Single window" : "Multiple windows";
}

constexpr std::string_view tileDetail(CaptureScope scope) {
    return scope == CaptureScope::singleWindow
               ? "Just the target window \u2014 composed over your custom desktop."
               : "Pick which windows to include \u2014 composed at their real screen positions.";
}

}  // namespace zd
