#pragma once
// The system's one Boolean "dark mode" setting, read and written through the platform's tool
// (macOS: the System Events scripts through osascript; Linux: gsettings and XSETTINGS).
// Results cross raw: the core decides what the output means.

#include <optional>

#include "env/ToolResult.h"

namespace zd {

class AppearanceBackend {
  public:
    virtual ~AppearanceBackend() = default;

    // Reads the setting. Blocks until the tool has ended. None when it couldn't be started.
    virtual std::optional<ToolResult> readDarkMode() = 0;
    // Writes the setting; the change reaches running applications at once. Blocks until the
    // tool has ended. None when it couldn't be started.
    virtual std::optional<ToolResult> writeDarkMode(bool dark) = 0;
};

}  // namespace zd
