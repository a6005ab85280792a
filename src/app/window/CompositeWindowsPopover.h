#pragma once
// The rows of the multiple-windows list in a popover: a tick per window and a drag to restack,
// the top row being the front-most window. Closing the popover clears its flag in the state.

#include <QFrame>

#include "ui/ContentView.h"

class QListWidget;
class QLabel;

namespace zd::app {

class CompositeWindowsPopover : public QFrame {
  public:
    CompositeWindowsPopover(ContentView& view, QWidget* parent);
    void openBelow(QWidget* anchor);
    // Shows the rows of the state; a drag in progress is left alone.
    void refresh();
    QListWidget* list() const { return list_; }

  protected:
    void hideEvent(QHideEvent* event) override;

  private:
    ContentView& view_;
    QLabel* empty_;
    QLabel* helper_;
    QListWidget* list_;
    bool updating_ = false;
};

}  // namespace zd::app
