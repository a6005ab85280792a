#pragma once
// The one window: the settings on the left (scrolling, sections in order, the scope choosing
// which of the source sections show), the preview on the right, the actions bar below. It
// keeps the lists current (on appearing, on activation and on the one-second tick, through
// the core's gates) and shows the progress panel while a run works.

#include <QMainWindow>

#include "env/Environment.h"
#include "run/RunServices.h"
#include "ui/ContentView.h"

class QScrollArea;
class QSplitter;

namespace zd::app {

class ActionsBar;
class BackgroundsSection;
class CaptureSection;
class CompositeWindowsSection;
class GeometrySection;
class LanguageSection;
class MenuBarSection;
class PreviewPane;
class ProgressPanel;
class ScopeSection;
class SizePresetSection;
class SourceSection;

class MainWindow : public QMainWindow {
  public:
    // `panel` may be null (tests without one); not owned.
    MainWindow(ContentView& view, Environment& env, RunServices& services,
               ProgressPanel* panel = nullptr, QWidget* parent = nullptr);
    ~MainWindow() override;

    ScopeSection* scopeSection() const { return scope_; }
    SourceSection* sourceSection() const { return source_; }
    SizePresetSection* sizePresetSection() const { return sizePreset_; }
    CompositeWindowsSection* compositeWindowsSection() const { return composite_; }
    GeometrySection* geometrySection() const { return geometry_; }
    LanguageSection* languageSection() const { return languages_; }
    CaptureSection* captureSection() const { return capture_; }
    BackgroundsSection* backgroundsSection() const { return backgrounds_; }
    MenuBarSection* menuBarSection() const { return menuBar_; }
    PreviewPane* previewPane() const { return preview_; }
    ActionsBar* actionsBar() const { return actions_; }
    QScrollArea* settingsPane() const { return left_; }

  protected:
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void applyScope();
    void scrollToMenuBarSection();
    ContentView& view_;
    ProgressPanel* panel_;
    QScrollArea* left_;
    ScopeSection* scope_;
    SourceSection* source_;
    QWidget* sourceDivider_;
    SizePresetSection* sizePreset_;
    CompositeWindowsSection* composite_;
    GeometrySection* geometry_;
    LanguageSection* languages_;
    CaptureSection* capture_;
    BackgroundsSection* backgrounds_;
    MenuBarSection* menuBar_;
    PreviewPane* preview_;
    ActionsBar* actions_;
    bool appeared_ = false;
    bool replaceAccessories_;
    std::vector<Subscription> subscriptions_;
};

}  // namespace zd::app
