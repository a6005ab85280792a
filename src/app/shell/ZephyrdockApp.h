#pragma once
// The application: the environment of this platform, the run's services, the window's state
// loaded from the settings, the main window with its menus, the progress panel and the
// updater. The program ends when the main window closes; the panel doesn't count.

#include <QObject>

#include <memory>
#include <optional>
#include <string>

#include "run/Task.h"

class QMainWindow;
class QMenu;

namespace zd {
class ContentView;
class LiveRunServices;
class PanelWindowBackend;
class PlatformEnvironment;
class RunJournal;
class RunJournalBackend;
}  // namespace zd

namespace zd::app {

class MainWindow;
class ProgressPanel;
class QtDialogBackend;
class UpdaterController;

// The File and Help menus of a main window: File without New, Help with "About Zephyrdock"
// and "Check for Updates…" right after it. `checkForUpdates` runs the update check.
void installMenus(QMainWindow& window, const std::function<void()>& checkForUpdates);

class ZephyrdockApp : public QObject {
  public:
    struct Options {
        std::string settingsPath;  // empty: the user's own settings file
    };
    ZephyrdockApp();
    ~ZephyrdockApp() override;

    // Builds everything and shows the window in front; the text says why it couldn't.
    std::optional<std::string> start(const Options& options);
    MainWindow* window() const { return window_.get(); }
    ContentView* view() const { return view_.get(); }
    ProgressPanel* panel() const { return panel_.get(); }

  private:
    // What runs change is journaled, so that a start after a crash puts it back.
    std::unique_ptr<RunJournalBackend> journalBackend_;
    std::unique_ptr<RunJournal> journal_;
    std::unique_ptr<PlatformEnvironment> platform_;
    std::unique_ptr<QtDialogBackend> dialogs_;
    std::unique_ptr<LiveRunServices> services_;
    std::unique_ptr<ContentView> view_;
    std::unique_ptr<PanelWindowBackend> panelWindows_;
    std::unique_ptr<ProgressPanel> panel_;
    std::unique_ptr<MainWindow> window_;
    std::unique_ptr<UpdaterController> updater_;
    std::optional<TaskHandle> recovery_;
};

}  // namespace zd::app
