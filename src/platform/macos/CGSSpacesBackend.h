#pragma once
// Desktops through the window server's private calls (CGSFacade).

#include "env/SpacesBackend.h"

namespace zd::mac {

class CGSSpacesBackend : public SpacesBackend {
  public:
    std::uint64_t activeSpace() const override;
    Value managedDisplaySpaces() const override;
    Value spacesForWindows(const std::vector<std::uint32_t>& windows, int mask) const override;
};

}  // namespace zd::mac
