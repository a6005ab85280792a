#pragma once
// "Menu bar": the switch, Real or Clean accessories, and for Clean the clock text, the four
// accessory chips and the battery's charge. Nothing here is stored.

#include <QWidget>

#include <array>

#include "ui/ContentView.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QSlider;

namespace zd::app {

class IconToggleChip;
class Tile;

class MenuBarSection : public QWidget {
  public:
    explicit MenuBarSection(ContentView& view, QWidget* parent = nullptr);
    QCheckBox* visibleSwitch() const { return visible_; }
    Tile* cleanTile() const { return clean_; }

  private:
    void refresh();
    void change(const std::function<void(MenuBarConfig&)>& edit);
    ContentView& view_;
    QCheckBox* visible_;
    QWidget* body_;
    Tile* real_;
    Tile* clean_;
    QWidget* accessories_;
    QLineEdit* clock_;
    std::array<IconToggleChip*, 4> chips_{};
    QSlider* battery_;
    QLabel* percent_;
    QWidget* spacer_;
    Subscription settings_;
};

}  // namespace zd::app
