#pragma once
// The few places where the system talks to the user outside the main window: the folder
// chooser, the picture chooser of a background, the one alert (the summary of a multiple-windows run), showing a folder in the
// file manager, and bringing this program to the front after a run.

#include <optional>
#include <string>
#include <vector>

namespace zd {

enum class AlertStyle { warning, informational, critical };

class DialogBackend {
  public:
    virtual ~DialogBackend() = default;

    // Asks for a folder (folders only, new ones may be created), modally. The chosen folder's
    // absolute path, or nothing when the user cancels.
    virtual std::optional<std::string> chooseFolder(const std::string& message) = 0;

    // Asks for one picture file (no folders, no multiple selection), modally, offering the
    // files whose extension (lower case, without the dot) is one of `extensions`. The chosen
    // file's absolute path, or nothing when the user cancels.
    virtual std::optional<std::string> chooseImageFile(
        const std::vector<std::string>& extensions) = 0;

    // Shows an alert modally and returns once the user has answered.
    virtual void showAlert(const std::string& messageText, const std::string& informativeText,
                           AlertStyle style, const std::vector<std::string>& buttons) = 0;

    // Shows the folder in the file manager and brings the file manager to the front.
    virtual void revealFolder(const std::string& path) = 0;

    // Brings this program's windows to the front, ahead of every other application.
    virtual void activateThisProgram() = 0;
};

}  // namespace zd
