#pragma once
// "Languages": the Add menu of the catalog's languages not yet chosen, and the chosen ones as
// chips. Multiple-windows shots can't switch languages: the section dims and hides its chips
// (the list stays).

#include <QWidget>

#include "ui/ContentView.h"

class QLabel;
class QMenu;
class QToolButton;

namespace zd::app {

class FlowLayout;

class LanguageSection : public QWidget {
  public:
    explicit LanguageSection(ContentView& view, QWidget* parent = nullptr);
    QToolButton* addButton() const { return add_; }
    QMenu* addMenu() const { return menu_; }
    QWidget* chips() const { return chips_; }

  private:
    void refresh();
    void fillMenu();
    ContentView& view_;
    QToolButton* add_;
    QMenu* menu_;
    QLabel* helper_;
    QWidget* chips_;
    FlowLayout* flow_;
    QLabel* chipsHelper_;
    std::vector<LanguageSelection> shown_;
    bool shownOnce_ = false;
    Subscription settings_;
};

}  // namespace zd::app
