#pragma once
// The dialogs of the application: Qt's folder and file choosers, a message box for the one
// alert, the desktop's file manager for a folder, and the main window brought to the front.

#include <QPointer>
#include <QWidget>

#include "env/DialogBackend.h"

namespace zd::app {

class QtDialogBackend final : public DialogBackend {
  public:
    // The window the dialogs belong to and that comes to the front; set once it exists.
    void setWindow(QWidget* window) { window_ = window; }

    std::optional<std::string> chooseFolder(const std::string& message) override;
    std::optional<std::string> chooseImageFile(const std::vector<std::string>& extensions) override;
    void showAlert(const std::string& messageText, const std::string& informativeText,
                   AlertStyle style, const std::vector<std::string>& buttons) override;
    void revealFolder(const std::string& path) override;
    void activateThisProgram() override;

  private:
    QPointer<QWidget> window_;
};

}  // namespace zd::app
