#include "shell/QtDialogBackend.h"

#include <QDesktopServices>
#include <QFileDialog>
#include <QMessageBox>
#include <QUrl>

namespace zd::app {

std::optional<std::string> QtDialogBackend::chooseFolder(const std::string& message) {
    const QString folder =
        QFileDialog::getExistingDirectory(window_, QString::fromStdString(message));
    if (folder.isEmpty())
        return std::nullopt;
    return folder.toStdString();
}

std::optional<std::string> QtDialogBackend::chooseImageFile(
    const std::vector<std::string>& extensions) {
    QStringList patterns;
    for (const std::string& extension : extensions)
        patterns << "*." + QString::fromStdString(extension);
    const QString file = QFileDialog::getOpenFileName(window_, "Choose image", QString(),
                                                      "Images (" + patterns.join(' ') + ")");
    if (file.isEmpty())
        return std::nullopt;
    return file.toStdString();
}

void QtDialogBackend::showAlert(const std::string& messageText, const std::string& informativeText,
                                AlertStyle style, const std::vector<std::string>& buttons) {
    QMessageBox box(window_);
    box.setText(QString::fromStdString(messageText));
    box.setInformativeText(QString::fromStdString(informativeText));
    box.setIcon(style == AlertStyle::critical        ? QMessageBox::Critical
                : style == AlertStyle::informational ? QMessageBox::Information
                                                     : QMessageBox::Warning);
    for (const std::string& button : buttons)
        box.addButton(QString::fromStdString(button), QMessageBox::AcceptRole);
    if (buttons.empty())
        box.addButton(QMessageBox::Ok);
    box.exec();
}

void QtDialogBackend::revealFolder(const std::string& path) {
    QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(path)));
}

void QtDialogBackend::activateThisProgram() {
    if (window_) {
        window_->show();
        window_->raise();
        window_->activateWindow();
    }
}

}  // namespace zd::app
