#pragma once
// Reads and sets the system-wide Light or Dark appearance, which the target follows. The
// switch is made for the whole machine; the run remembers the user's mode and sets it back.
// Holds no state: the state is the system's setting. Calls block until the tool has ended.

#include <optional>
#include <string>
#include <string_view>

#include "model/AppearanceMode.h"
#include "model/Expected.h"

namespace zd {

class AppearanceBackend;

namespace AppearanceController {

// The two values of this interface, Light first.
enum class Mode { light, dark };

struct Failure {
    enum class Kind {
        scriptError,       // declared for script errors with their text; nothing raises it
        automationDenied,  // the setting couldn't be written
    };
    Kind kind = Kind::automationDenied;
    std::string message;
    friend bool operator==(const Failure&, const Failure&) = default;
};

constexpr Mode modeOf(AppearanceMode mode) {
    return mode == AppearanceMode::dark ? Mode::dark : Mode::light;
}

// The script that reads the setting, and the one that writes it: five lines each, joined by
// line feeds, four blanks of indentation per level.
std::string readingScript();
std::string writingScript(Mode mode);

// The mode a read of the setting printed: "true"/"false" from the scripts, or the GNOME
// colour scheme ('prefer-dark', 'default', 'prefer-light'), trimmed and without regard to
// case. None for anything else.
std::optional<Mode> parseMode(std::string_view output);

// The system's mode, or none if it can't be told.
std::optional<Mode> current(AppearanceBackend& backend);

// Sets the mode, even the one already in force. Fails with automationDenied when the tool
// couldn't be started, ended with an error, or printed bytes that aren't UTF-8.
Expected<void, Failure> set(AppearanceBackend& backend, Mode mode);

}  // namespace AppearanceController
}  // namespace zd
