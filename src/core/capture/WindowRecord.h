#pragma once
// Typed reads of one entry of the window server's list. Each gives nothing when the key is
// missing or holds another type, so the list rules can tell "absent" from "wrong".

#include <cstdint>
#include <optional>
#include <string>

#include "model/Value.h"

namespace zd::WindowRecord {

// The layers of the menu bar and of its status items, which are windows of their own.
inline constexpr int menuBarLayer = 24;
inline constexpr int statusItemLayer = 25;

// A layer ordinary windows live on: not below the desktop, not the menu bar's or its items'.
constexpr bool isOrdinaryLayer(std::int64_t layer) {
    return layer >= 0 && layer != menuBarLayer && layer != statusItemLayer;
}

std::optional<std::int64_t> layer(const Value& record);
std::optional<std::int32_t> ownerPID(const Value& record);
std::optional<std::string> ownerName(const Value& record);
// The window number when it is an unsigned 32-bit integer.
std::optional<std::uint32_t> number(const Value& record);
// The window's title; empty when absent or not a string.
std::string name(const Value& record);

// How "kCGWindowBounds" reads for the size tests.
struct BoundsSize {
    bool readable = false;  // a dictionary of numbers; otherwise the size tests let it pass
    std::optional<double> width;
    std::optional<double> height;
};
BoundsSize boundsSize(const Value& record);

// Both sides at least the minimums (inclusive); unreadable bounds pass, missing sides fail.
bool passesSize(const Value& record, double minWidth, double minHeight);

}  // namespace zd::WindowRecord
