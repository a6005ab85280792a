#pragma once
// What is done to the target window before capture.

#include <string_view>

#include "model/EnumTraits.h"

namespace zd {

enum class WindowSizePreset { half, threeQ, full, current };

template <>
struct EnumTraits<WindowSizePreset> {
    static constexpr std::array cases{WindowSizePreset::half, WindowSizePreset::threeQ,
                                      WindowSizePreset::full, WindowSizePreset::current};
    static constexpr std::array<std::string_view, 4> rawValues{"half", "threeQ", "full", "current"};
};

constexpr std::string_view title(WindowSizePreset preset) {
    switch (preset) {
        case WindowSizePreset::half: return "\u00bd screen";
        case WindowSizePreset::threeQ: return "\u00be screen";
        case WindowSizePreset::full: return "Full screen";
        case WindowSizePreset::current: return "Current";
    }
    return "";
}

constexpr std::string_view explanation(WindowSizePreset preset) {
    switch (preset) {
        case WindowSizePreset::half: return "Half the visible-screen area, centered.";
        case WindowSizePreset::threeQ: return "Three-quarters of the visible-screen area, centered.";
        case WindowSizePreset::full: return "Fills the visible-screen area.";
        case WindowSizePreset::current: return "Don't move or resize the source \u2014 capture as-is.";
    }
    return "";
}

}  // namespace zd
