#include "macos/MacAppearanceBackend.h"

#include "control/AppearanceController.h"
#include "macos/MacToolRunner.h"

namespace zd::mac {

namespace {
constexpr const char* osascript = "/usr/bin/osascript";
}

std::optional<ToolResult> MacAppearanceBackend::readDarkMode() {
    return runTool(osascript, {"-e", AppearanceController::readingScript()});
}

std::optional<ToolResult> MacAppearanceBackend::writeDarkMode(bool dark) {
    using AppearanceController::Mode;
    return runTool(osascript,
                   {"-e", AppearanceController::writingScript(dark ? Mode::dark : Mode::light)});
}

}  // namespace zd::mac
