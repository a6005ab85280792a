#pragma once
// "Source": the picker of the window to shoot, its first item standing for none.

#include <QWidget>

#include <cstdint>
#include <optional>

#include "controls/FillingPopUp.h"
#include "ui/ContentView.h"

class QLabel;

namespace zd::app {

class SourceSection : public QWidget {
  public:
    using Picker = FillingPopUp<std::optional<std::uint32_t>>;
    explicit SourceSection(ContentView& view, QWidget* parent = nullptr);
    Picker* picker() const { return picker_; }

  private:
    void refresh();
    ContentView& view_;
    QLabel* heading_;
    Picker* picker_;
    QLabel* helper_;
    std::vector<Subscription> subscriptions_;
};

}  // namespace zd::app
