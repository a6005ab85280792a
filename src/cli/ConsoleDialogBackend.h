#pragma once
// The dialogs of a run on a terminal: no folder or picture chooser (the save folder comes from a
// flag or the settings), the one alert written to stderr, the file manager only when asked for.

#include <ostream>

#include "env/DialogBackend.h"

namespace zd::cli {

class ConsoleDialogBackend final : public DialogBackend {
  public:
    ConsoleDialogBackend(std::ostream& err, bool revealFolders)
        : err_(err), revealFolders_(revealFolders) {}

    std::optional<std::string> chooseFolder(const std::string& message) override;
    // Nobody to ask either: a background picture comes from --background-image.
    std::optional<std::string> chooseImageFile(const std::vector<std::string>&) override {
        return std::nullopt;
    }
    void showAlert(const std::string& messageText, const std::string& informativeText,
                   AlertStyle style, const std::vector<std::string>& buttons) override;
    // xdg-open, detached, when --reveal asked for it; nothing otherwise.
    void revealFolder(const std::string& path) override;
    void activateThisProgram() override {}

  private:
    std::ostream& err_;
    bool revealFolders_;
};

}  // namespace zd::cli
