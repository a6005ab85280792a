#pragma once
// "Capture mode": one tile per scope; a tap changes the scope and nothing else.

#include <QWidget>

#include <array>

#include "ui/ContentView.h"

namespace zd::app {

class Tile;

class ScopeSection : public QWidget {
  public:
    explicit ScopeSection(ContentView& view, QWidget* parent = nullptr);
    Tile* tile(CaptureScope scope) const { return tiles_[caseIndex(scope)]; }

  private:
    void refresh();
    ContentView& view_;
    std::array<Tile*, 2> tiles_{};
    Subscription settings_;
};

}  // namespace zd::app
