#pragma once
// EWMH desktops as desktops ("Spaces"), answered in the shapes the core reads: one display
// whose "Spaces" are the desktops in order, each of "type" 0 with "ManagedSpaceID" its index
// plus one (0 means "no desktop" to the core). A window on every desktop (sticky) lies on all.

#include <memory>

#include "XcbConnection.h"
#include "env/SpacesBackend.h"

namespace zd::x11 {

class EwmhSpacesBackend : public SpacesBackend {
  public:
    explicit EwmhSpacesBackend(std::shared_ptr<XcbConnection> connection)
        : connection_(std::move(connection)) {}

    std::uint64_t activeSpace() const override;
    Value managedDisplaySpaces() const override;
    Value spacesForWindows(const std::vector<std::uint32_t>& windows, int mask) const override;

    static std::uint64_t spaceId(std::uint32_t desktopIndex) {
        return std::uint64_t{desktopIndex} + 1;
    }

  private:
    std::uint32_t desktopCount() const;
    std::shared_ptr<XcbConnection> connection_;
};

}  // namespace zd::x11
