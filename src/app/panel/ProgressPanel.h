#pragma once
// The floating progress pill, 540 by 64: built once and reused for every run, shown when a
// run starts and hidden when it ends. It stands above other windows on every desktop, never
// takes the focus or activation from the target being posed, and doesn't keep the program
// alive. Where on the screen it stands is the core's rule, worked out anew at each show.

#include <QWidget>

#include <functional>
#include <optional>

#include "model/Geometry.h"
#include "ui/CaptureProgressModel.h"

namespace zd {
class PanelWindowBackend;
}

namespace zd::app {

class CaptureProgressView;

class ProgressPanel : public QWidget {
  public:
    // The main screen's frame in the toolkit's coordinates (y downward); none without one.
    using ScreenFrame = std::function<std::optional<Rect>()>;

    // `windows` adds what the window system needs beyond the toolkit (may be null; not
    // owned). The screen is the toolkit's primary one unless `screenFrame` says otherwise.
    explicit ProgressPanel(PanelWindowBackend* windows = nullptr, ScreenFrame screenFrame = nullptr,
                           std::function<double()> wallClock = nullptr);

    // Set once by the main window; the model outlives the panel's use of it.
    void setModel(CaptureProgressModel* model);
    // Follows the run: shown as it starts, hidden as it ends.
    void setWorking(bool working);
    // Places the panel and brings it up without activating anything; nothing without a model
    // or a screen.
    void present();

    CaptureProgressView* view() const { return view_; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    PanelWindowBackend* windows_;
    ScreenFrame screenFrame_;
    CaptureProgressView* view_;
    CaptureProgressModel* model_ = nullptr;
};

}  // namespace zd::app
