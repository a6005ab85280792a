#pragma once
// The software updater of the application: one per program, started at launch, asked again by
// "Check for Updates…". It reads the feed's address from the settings (none: no checks), checks
// once in the background at launch (shown only when a newer version exists) and on demand
// (shown either way). Failures are shown to nobody.

#include <QObject>
#include <QString>
#include <QUrl>
#include <functional>

#include "shell/UpdateChecker.h"

namespace zd {
class SettingsStore;
}

namespace zd::app {

class UpdaterController : public QObject {
    Q_OBJECT
  public:
    // What the controller shows: a title, a text, and the page to offer (empty: a plain alert).
    struct Notice {
        QString title;
        QString text;
        QUrl page;
    };
    using Presenter = std::function<void(const Notice&)>;

    UpdaterController(SettingsStore& settings, QString currentVersion, QObject* parent = nullptr);

    // Replaces the message boxes (tests, the command line).
    void setPresenter(Presenter presenter) { present_ = std::move(presenter); }
    UpdateChecker& checker() { return checker_; }

    // The quiet check at launch.
    void startAtLaunch() { start(false); }
    // The menu command.
    void checkForUpdates() { start(true); }

  signals:
    // After each check, whatever its outcome (for tests and the menu's enabled state).
    void checkEnded(zd::app::UpdateChecker::Outcome outcome);

  private:
    void start(bool userAsked);
    void onFinished(UpdateChecker::Outcome outcome, const SoftwareUpdate::Release& release);
    static void showNotice(const Notice& notice);

    SettingsStore& settings_;
    QString current_;
    UpdateChecker checker_;
    Presenter present_ = &UpdaterController::showNotice;
    bool userAsked_ = false;
};

}  // namespace zd::app
