#pragma once
// Where the next run's files go: the folder of the last run, or a new run folder.

#include <string_view>

#include "model/EnumTraits.h"

namespace zd {

enum class DestinationMode { group, newDestination };

template <>
struct EnumTraits<DestinationMode> {
    static constexpr std::array cases{DestinationMode::group, DestinationMode::newDestination};
    static constexpr std::array<std::string_view, 2> rawValues{"group", "new"};
};

constexpr std::string_view label(DestinationMode mode) {
    return mode == DestinationMode::group ? "Group with previous capture" : "New destination";
}

// Name of the symbol shown beside the label.
constexpr std::string_view symbolName(DestinationMode mode) {
    return mode == DestinationMode::group ? "square.stack.3d.up" : "folder.badge.plus";
}

}  // namespace zd
