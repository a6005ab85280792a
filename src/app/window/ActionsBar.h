#pragma once
// The bar under the two panes: where the run's pictures go (the destination menu after a run,
// the save folder), the variant name, the countdown, the take button (Ctrl+Shift+C) and the
// reveal button, which pulses when a run has finished.

#include <QAbstractButton>
#include <QFrame>

#include "env/Environment.h"
#include "ui/ContentView.h"

class QAction;
class QLineEdit;
class QMenu;
class QPushButton;
class QShortcut;
class QToolButton;
class QVariantAnimation;

namespace zd::app {

// The square folder button, scaled about its centre while it pulses.
class RevealButton : public QAbstractButton {
  public:
    explicit RevealButton(QWidget* parent = nullptr);
    // Three ease-in-out swells of 0.45 s out and back while on; back to its size when off.
    void setPulsing(bool on);
    double scale() const { return scale_; }
    QVariantAnimation* pulse() const { return pulse_; }
    QSize sizeHint() const override { return {44, 44}; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    double scale_ = 1.0;
    QVariantAnimation* pulse_;
};

class ActionsBar : public QFrame {
  public:
    ActionsBar(ContentView& view, Environment& env, QWidget* parent = nullptr);
    QToolButton* destinationMenu() const { return destination_; }
    QPushButton* saveFolderButton() const { return saveFolder_; }
    QLineEdit* variantField() const { return variant_; }
    QToolButton* countdownMenu() const { return countdown_; }
    QAction* countdownChoice(int seconds) const;
    QAction* repeatToggle() const { return repeat_; }
    QPushButton* takeButton() const { return take_; }
    // Ctrl+Shift+C anywhere in the window; a button's own shortcut would yield to its text.
    QShortcut* takeShortcut() const { return takeShortcut_; }
    RevealButton* revealButton() const { return reveal_; }

  private:
    void refresh();
    ContentView& view_;
    Environment& env_;
    QToolButton* destination_;
    QPushButton* saveFolder_;
    QLineEdit* variant_;
    QToolButton* countdown_;
    std::vector<std::pair<int, QAction*>> countdownChoices_;
    QAction* repeat_;
    QPushButton* take_;
    QShortcut* takeShortcut_;
    RevealButton* reveal_;
    std::vector<Subscription> subscriptions_;
};

}  // namespace zd::app
