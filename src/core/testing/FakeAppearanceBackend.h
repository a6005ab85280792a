#pragma once
// The dark-mode setting as a script: reads answer `readResult`, writes answer `writeResult`
// and are recorded in order ("read", "write dark", "write light").

#include <string>
#include <vector>

#include "env/AppearanceBackend.h"

namespace zd::testing {

class FakeAppearanceBackend : public AppearanceBackend {
  public:
    std::optional<ToolResult> readDarkMode() override {
        calls.push_back("read");
        return readResult;
    }
    std::optional<ToolResult> writeDarkMode(bool dark) override {
        calls.push_back(dark ? "write dark" : "write light");
        return writeResult;
    }

    std::optional<ToolResult> readResult = ToolResult{0, "false\n"};
    std::optional<ToolResult> writeResult = ToolResult{0, ""};
    std::vector<std::string> calls;
};

}  // namespace zd::testing
