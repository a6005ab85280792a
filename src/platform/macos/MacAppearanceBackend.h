#pragma once
// The system's Dark Mode through System Events: the core's two scripts run by osascript.

#include "env/AppearanceBackend.h"

namespace zd::mac {

class MacAppearanceBackend : public AppearanceBackend {
  public:
    std::optional<ToolResult> readDarkMode() override;
    std::optional<ToolResult> writeDarkMode(bool dark) override;
};

}  // namespace zd::mac
