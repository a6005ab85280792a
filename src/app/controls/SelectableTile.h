#pragma once
// The look the main window's tiles share: a rounded rectangle filled with the accent colour
// when selected (else a faint secondary), with an accent border drawn inside its edge. The
// caller owns the selection and learns of a click through `onTap`.

#include <QAbstractButton>

#include <functional>

namespace zd::app {

class SelectableTile : public QAbstractButton {
  public:
    struct Look {
        double radius = 8;
        double fillOn = 0.18;   // accent opacity when selected
        double fillOff = 0.08;  // secondary opacity when not
        double borderWidth = 1.5;
        double borderOpacity = 1.0;  // of the accent; no border when not selected
    };

    SelectableTile(Look look, QWidget* parent);

    void setSelected(bool selected);
    bool isSelected() const { return selected_; }
    std::function<void()> onTap;

  protected:
    // Paints the tile's background and border; subclasses paint their content over it.
    void paintEvent(QPaintEvent* event) override;
    void paintTile(QPainter& painter) const;

  private:
    Look look_;
    bool selected_ = false;
};

}  // namespace zd::app
