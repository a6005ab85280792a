#pragma once
// The folder and picture choosers (NSOpenPanel), the one alert (NSAlert), showing a folder in
// the Finder and bringing this program forward.

#include "env/DialogBackend.h"

namespace zd::mac {

class AppKitDialogBackend : public DialogBackend {
  public:
    std::optional<std::string> chooseFolder(const std::string& message) override;
    // A picture file (PNG, JPEG, HEIC, TIFF or any image), one, no folders: the platform's
    // image types already cover every extension the core lists.
    std::optional<std::string> chooseImageFile(
        const std::vector<std::string>& extensions) override;
    void showAlert(const std::string& messageText, const std::string& informativeText,
                   AlertStyle style, const std::vector<std::string>& buttons) override;
    void revealFolder(const std::string& path) override;
    void activateThisProgram() override;
};

}  // namespace zd::mac
