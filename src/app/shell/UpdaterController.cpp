#include "shell/UpdaterController.h"

#include <QDesktopServices>
#include <QMessageBox>
#include <QPushButton>

#include "common/SystemUpdater.h"
#include "env/SettingsStore.h"

namespace zd::app {

UpdaterController::UpdaterController(SettingsStore& settings, QString currentVersion,
                                     QObject* parent)
    : QObject(parent), settings_(settings), current_(currentVersion), checker_(currentVersion) {
    connect(&checker_, &UpdateChecker::finished, this, &UpdaterController::onFinished);
}

void UpdaterController::start(bool userAsked) {
    // Where the platform's own updater is built in (Sparkle), it alone checks and tells.
    if (userAsked ? SystemUpdater::checkForUpdates() : SystemUpdater::start())
        return;
    const auto feed = settings_.stringForKey(SoftwareUpdate::feedURLKey).value_or("");
    userAsked_ = userAsked;
    if (feed.empty()) {
        emit checkEnded(UpdateChecker::Outcome::failed);
        return;
    }
    checker_.check(QUrl(QString::fromStdString(feed)));
}

void UpdaterController::onFinished(UpdateChecker::Outcome outcome,
                                   const SoftwareUpdate::Release& release) {
    const auto current = current_.toStdString();
    if (outcome == UpdateChecker::Outcome::newer) {
        present_({QString::fromStdString(SoftwareUpdate::newerTitle(release)),
                  QString::fromStdString(SoftwareUpdate::newerText(release, current)),
                  QUrl(QString::fromStdString(release.pageURL))});
    } else if (outcome == UpdateChecker::Outcome::upToDate && userAsked_) {
        present_({QString::fromUtf8(SoftwareUpdate::upToDateTitle),
                  QString::fromStdString(SoftwareUpdate::upToDateText(current)),
                  {}});
    }
    emit checkEnded(outcome);
}

void UpdaterController::showNotice(const Notice& notice) {
    QMessageBox box(QMessageBox::Information, notice.title, notice.title);
    box.setInformativeText(notice.text);
    if (notice.page.isEmpty()) {
        box.addButton(QMessageBox::Ok);
        box.exec();
        return;
    }
    auto* open =
        box.addButton(QString::fromUtf8(SoftwareUpdate::openPageButton), QMessageBox::AcceptRole);
    box.addButton(QString::fromUtf8(SoftwareUpdate::laterButton), QMessageBox::RejectRole);
    box.setDefaultButton(open);
    box.exec();
    if (box.clickedButton() == open)
        QDesktopServices::openUrl(notice.page);
}

}  // namespace zd::app
