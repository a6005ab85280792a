#pragma once
// "Source window size": one tile per preset, and the Accessibility button where the platform
// asks for that permission and it hasn't been given.

#include <QWidget>

#include <array>

#include "run/RunServices.h"
#include "ui/ContentView.h"

class QPushButton;

namespace zd::app {

class PresetTile;

class SizePresetSection : public QWidget {
  public:
    SizePresetSection(ContentView& view, RunServices& services, QWidget* parent = nullptr);
    PresetTile* tile(WindowSizePreset preset) const { return tiles_[caseIndex(preset)]; }

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    void refresh();
    ContentView& view_;
    RunServices& services_;
    QPushButton* grant_;
    std::array<PresetTile*, 4> tiles_{};
    Subscription settings_;
};

}  // namespace zd::app
