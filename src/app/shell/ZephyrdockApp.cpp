#include "shell/ZephyrdockApp.h"

#include <QApplication>
#include <QMenuBar>
#include <QMessageBox>
#include <QPixmap>

#include "AppIcon.h"
#include "common/PanelWindowBackend.h"
#include "common/PlatformEnvironment.h"
#include "common/SystemUpdater.h"
#include "controls/AppPalette.h"
#include "env/RunJournalBackend.h"
#include "model/Preferences.h"
#include "panel/ProgressPanel.h"
#include "run/LiveRunServices.h"
#include "run/RunJournal.h"
#include "run/RunRecovery.h"
#include "shell/QtDialogBackend.h"
#include "shell/UpdaterController.h"
#include "ui/ContentView.h"
#include "window/MainWindow.h"

namespace zd::app {

namespace {

// Closing the main window ends the program, whatever other windows (the panel) are left.
class QuitOnClose : public QObject {
  public:
    using QObject::QObject;
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Close)
            QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
        return QObject::eventFilter(watched, event);
    }
};

}  // namespace

void installMenus(QMainWindow& window, const std::function<void()>& checkForUpdates) {
    QMenu* file = window.menuBar()->addMenu("&File");
    file->addAction("Close Window", QKeySequence::Close, &window, [&window] { window.close(); });
    file->addSeparator();
    file->addAction("Quit Zephyrdock", QKeySequence::Quit, qApp, &QCoreApplication::quit);
    QMenu* help = window.menuBar()->addMenu("&Help");
    help->addAction("About Zephyrdock", &window, [&window] {
        QMessageBox::about(&window, "About Zephyrdock",
                           QString("Zephyrdock %1\nStore screenshots of your application, in every "
                                   "language, in Light and Dark.")
                               .arg(ZD_VERSION));
    });
    help->addAction(QString::fromUtf8("Check for Updates\u2026"), &window, checkForUpdates);
}

ZephyrdockApp::ZephyrdockApp() = default;

ZephyrdockApp::~ZephyrdockApp() {
    // The window and its subscriptions go before the state they observe.
    recovery_.reset();
    window_.reset();
    panel_.reset();
    updater_.reset();
    view_.reset();
}

std::optional<std::string> ZephyrdockApp::start(const Options& options) {
    journalBackend_ = PlatformEnvironment::journalBackend();
    if (journalBackend_)
        journal_ = std::make_unique<RunJournal>(
            *journalBackend_, static_cast<std::int32_t>(QCoreApplication::applicationPid()));
    auto platform = PlatformEnvironment::create({options.settingsPath, journal_.get()});
    if (!platform)
        return platform.error();
    platform_ = std::move(*platform);
    Environment& env = platform_->environment();
    // Our own palette before the first widget, so a dark desktop gets a dark Zephyrdock.
    if (env.appearance != nullptr)
        QApplication::setPalette(appPalette(desktopIsDark(*env.appearance)));
    dialogs_ = std::make_unique<QtDialogBackend>();
    env.dialogs = dialogs_.get();
    services_ = std::make_unique<LiveRunServices>(env);
    view_ = std::make_unique<ContentView>(
        env, *services_, Preferences::load(*env.settings, platform_->resourceBundle()));

    panelWindows_ = PanelWindowBackend::create();
    panel_ = std::make_unique<ProgressPanel>(panelWindows_.get());
    window_ = std::make_unique<MainWindow>(*view_, env, *services_, panel_.get());
    window_->setWindowIcon(QIcon(QPixmap::fromImage(render::drawAppIcon(256))));
    window_->installEventFilter(new QuitOnClose(this));
    dialogs_->setWindow(window_.get());

    updater_ = std::make_unique<UpdaterController>(*env.settings, ZD_VERSION);
    installMenus(*window_, [this] {
        if (!SystemUpdater::checkForUpdates())
            updater_->checkForUpdates();
    });

    // What a run that died (a crash, a kill) left changed is put back first, and said in the
    // status line.
    if (journalBackend_) {
        recovery_ =
            spawn([](Environment e, RunJournalBackend& backend, ContentView& view) -> Task<void> {
                if (auto line = co_await RunRecovery::recoverInterruptedRuns(e, backend))
                    view.progress.setStatusMessage(*line);
            }(platform_->environmentWithoutJournal(), *journalBackend_, *view_));
    }

    window_->show();
    window_->raise();
    window_->activateWindow();
    // Started at launch, not at the first use of the menu.
    if (!SystemUpdater::start())
        updater_->startAtLaunch();
    return std::nullopt;
}

}  // namespace zd::app
