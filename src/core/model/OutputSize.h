#pragma once
// The canvas on which the final picture is composed. The raw value is both the stored form
// and the text shown in the canvas picker.

#include <string_view>

#include "model/EnumTraits.h"
#include "model/Geometry.h"

namespace zd {

class ScreenBackend;

enum class OutputSize { mas2880, mas2560, mas1440, mas1280, current, custom };

template <>
struct EnumTraits<OutputSize> {
    static constexpr std::array cases{OutputSize::mas2880, OutputSize::mas2560, OutputSize::mas1440,
                                      OutputSize::mas1280, OutputSize::current, OutputSize::custom};
    static constexpr std::array<std::string_view, 6> rawValues{
        "2880 \u00d7 1800 (Mac App Store preferred)",
        "2560 \u00d7 1600",
        "1440 \u00d7 900",
        "1280 \u00d7 800",
        "Current size",
        "Custom\u2026"};
};

// The canvas in pixels. `custom` raises each custom value to at least 1; `current` is the
// main screen's frame times its scale factor, or 2880 × 1800 without a main screen.
Size resolvedSize(OutputSize size, int customWidth, int customHeight, const ScreenBackend& screens);

}  // namespace zd
