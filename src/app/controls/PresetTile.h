#pragma once
// A window size preset as a picture: a rounded outline in the proportions 1.6 to 1 holding a
// rectangle of the preset's share of the screen ("Current" as two lines of text instead).

#include <QAbstractButton>

#include <functional>

#include "model/WindowSizePreset.h"

namespace zd::app {

class PresetTile : public QAbstractButton {
  public:
    explicit PresetTile(WindowSizePreset preset, QWidget* parent = nullptr);

    void setSelected(bool selected);
    bool isSelected() const { return selected_; }
    // The glyph's rectangle for an inner area of `size` (none for `current`).
    static QRectF glyphRect(WindowSizePreset preset, const QRectF& area);
    std::function<void()> onTap;

    QSize sizeHint() const override { return {96, 60}; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override { return static_cast<int>(width / 1.6); }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    WindowSizePreset preset_;
    bool selected_ = false;
};

}  // namespace zd::app
