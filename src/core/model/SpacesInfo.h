#pragma once
// One desktop ("Space").

#include <cstdint>

namespace zd::Spaces {

struct Info {
    std::uint64_t id = 0;  // the system's managed space id
    int ordinal = 0;       // shown to the user, from 1 upward, over all displays
    bool isCurrent = false;

    friend bool operator==(const Info&, const Info&) = default;
};

}  // namespace zd::Spaces
