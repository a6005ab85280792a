#include "control/AppearanceController.h"

#include <algorithm>
#include <cctype>

#include "control/Utf8.h"
#include "env/AppearanceBackend.h"

#include "model/TrimmedText.h"
namespace zd::AppearanceController {

namespace {

std::string script(std::string_view innermost) {
    std::string text = "tell application \"System Events\"\n";
    text += "    tell appearance preferences\n";
    text += "        ";
    text += innermost;
    text += "\n    end tell\n";
    text += "end tell";
    return text;
}

// The tool's output as text, or none for every failure.
std::optional<std::string> textOf(const std::optional<ToolResult>& result) {
    if (!result || result->exitStatus != 0)
        return std::nullopt;
    if (!isValidUtf8(result->standardOutput))
        return std::nullopt;
    return result->standardOutput;
}

}  // namespace

std::string readingScript() {
    return script("return dark mode");
}

std::string writingScript(Mode mode) {
    return script(std::string("set dark mode to ") + (mode == Mode::dark ? "true" : "false"));
}

std::optional<Mode> parseMode(std::string_view output) {
    std::string word(trimmedText(output));
    std::transform(word.begin(), word.end(), word.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    if (word == "true" || word == "'prefer-dark'")
        return Mode::dark;
    if (word == "false" || word == "'default'" || word == "'prefer-light'")
        return Mode::light;
    return std::nullopt;
}

std::optional<Mode> current(AppearanceBackend& backend) {
    const auto text = textOf(backend.readDarkMode());
    if (!text)
        return std::nullopt;
    return parseMode(*text);
}

Expected<void, Failure> set(AppearanceBackend& backend, Mode mode) {
    // Any output at all, the empty text included, is success.
    if (!textOf(backend.writeDarkMode(mode == Mode::dark))) {
        return unexpected(Failure{Failure::Kind::automationDenied, {}});
    }
    return {};
}

}  // namespace zd::AppearanceController
