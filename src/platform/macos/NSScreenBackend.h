#pragma once
// The machine's screens through NSScreen: frames in points from the lower left of the first
// screen.

#include "env/ScreenBackend.h"

namespace zd::mac {

class NSScreenBackend : public ScreenBackend {
  public:
    std::optional<ScreenInfo> mainScreen() const override;
    std::optional<ScreenInfo> primaryScreen() const override;
    bool framesFromBottomLeft() const override { return true; }
};

}  // namespace zd::mac
