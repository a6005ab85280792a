#include "macos/CGSSpacesBackend.h"

#include "macos/CGSFacade.h"

namespace zd::mac {

std::uint64_t CGSSpacesBackend::activeSpace() const {
    return CGSFacade::activeSpace().value_or(0);
}

Value CGSSpacesBackend::managedDisplaySpaces() const {
    return CGSFacade::managedDisplaySpaces();
}

Value CGSSpacesBackend::spacesForWindows(const std::vector<std::uint32_t>& windows,
                                         int mask) const {
    return CGSFacade::spacesForWindows(windows, mask);
}

}  // namespace zd::mac
