#pragma once
// The target's own menus as the platform's accessibility interface shows them (AT-SPI on
// Linux, the AX attributes on macOS). The reply crosses raw: the core decides which bar counts
// and what its titles are.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace zd {

class AccessibleMenuBackend {
  public:
    virtual ~AccessibleMenuBackend() = default;

    // For each menu bar of the application with this process id, the names of its top-level
    // menus in order; an empty list when it has none. None when the accessibility interface
    // can't be reached or doesn't list the application. Blocks until answered.
    virtual std::optional<std::vector<std::vector<std::string>>> menuBars(std::int32_t pid) = 0;
};

}  // namespace zd
