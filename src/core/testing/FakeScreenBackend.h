#pragma once
// Scripted screens: a main one (with the focus) and a primary one.

#include "env/ScreenBackend.h"

namespace zd::testing {

class FakeScreenBackend : public ScreenBackend {
  public:
    std::optional<ScreenInfo> mainScreen() const override { return main; }
    std::optional<ScreenInfo> primaryScreen() const override { return primary ? primary : main; }
    bool framesFromBottomLeft() const override { return bottomLeft; }

    std::optional<ScreenInfo> main;
    std::optional<ScreenInfo> primary;
    bool bottomLeft = false;
};

}  // namespace zd::testing
