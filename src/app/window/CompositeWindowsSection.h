#pragma once
// "Windows in composite": the desktop picker and the button that opens the windows popover.

#include <QWidget>

#include <cstdint>

#include "controls/FillingPopUp.h"
#include "ui/ContentView.h"

class QPushButton;

namespace zd::app {

class CompositeWindowsPopover;

class CompositeWindowsSection : public QWidget {
  public:
    explicit CompositeWindowsSection(ContentView& view, QWidget* parent = nullptr);
    QPushButton* windowsButton() const { return button_; }
    CompositeWindowsPopover* popover() const { return popover_; }

  private:
    void refresh();
    ContentView& view_;
    FillingPopUp<std::uint64_t>* spaces_;
    QPushButton* button_;
    CompositeWindowsPopover* popover_;
    std::vector<Subscription> subscriptions_;
};

}  // namespace zd::app
