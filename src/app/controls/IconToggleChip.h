#pragma once
// A switch shown as one symbol, 30 by 24, in the accent colour when on; the label is its
// tooltip. A click flips the value and tells `onChange`.

#include <QAbstractButton>

#include <functional>
#include <string>

#include "controls/SelectableTile.h"

namespace zd::app {

class IconToggleChip : public SelectableTile {
  public:
    IconToggleChip(std::string symbol, const QString& label, QWidget* parent = nullptr);

    void setOn(bool on) { setSelected(on); }
    bool isOn() const { return isSelected(); }
    // The battery's chip follows the charge.
    void setSymbol(std::string symbol) {
        if (symbol != symbol_) {
            symbol_ = std::move(symbol);
            update();
        }
    }
    std::function<void(bool)> onChange;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    std::string symbol_;
};

}  // namespace zd::app
