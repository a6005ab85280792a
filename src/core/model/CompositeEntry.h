#pragma once
// One row of the multiple-windows list.

#include <cstdint>
#include <string>

namespace zd {

struct CompositeEntry {
    std::uint32_t id = 0;  // the window's number
    std::string appName;
    std::string title;
    bool enabled = false;  // the row is ticked; the only field that changes

    friend bool operator==(const CompositeEntry&, const CompositeEntry&) = default;
};

}  // namespace zd
