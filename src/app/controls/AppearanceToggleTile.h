#pragma once
// Light or Dark switched on or off: a small swatch of the appearance with its sun or moon,
// the word, and a check mark at the right when on.

#include "controls/SelectableTile.h"
#include "model/AppearanceMode.h"

namespace zd::app {

class AppearanceToggleTile : public SelectableTile {
  public:
    explicit AppearanceToggleTile(AppearanceMode mode, QWidget* parent = nullptr);

    void setOn(bool on) { setSelected(on); }
    bool isOn() const { return isSelected(); }
    QSize sizeHint() const override { return {160, 44}; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    AppearanceMode mode_;
};

}  // namespace zd::app
