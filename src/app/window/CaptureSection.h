#pragma once
// "Appearance": a tile per appearance (the last one on can't go off) and the window shadow.

#include <QWidget>

#include <array>

#include "ui/ContentView.h"

class QCheckBox;

namespace zd::app {

class AppearanceToggleTile;

class CaptureSection : public QWidget {
  public:
    explicit CaptureSection(ContentView& view, QWidget* parent = nullptr);
    AppearanceToggleTile* tile(AppearanceMode mode) const { return tiles_[caseIndex(mode)]; }
    QCheckBox* shadow() const { return shadow_; }

  private:
    void refresh();
    ContentView& view_;
    std::array<AppearanceToggleTile*, 2> tiles_{};
    QCheckBox* shadow_;
    Subscription settings_;
};

}  // namespace zd::app
