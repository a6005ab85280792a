// The floating panel on macOS: the window made a non-activating floating panel on every
// Space by FloatingPanelWindow. The window server always composites, so the capsule's
// translucent corners need no cutting.
#include "common/PanelWindowBackend.h"
#include "macos/FloatingPanelWindow.h"

namespace zd {

namespace {

class MacPanelWindowBackend : public PanelWindowBackend {
  public:
    void floatOnAllDesktops(std::uintptr_t window) override {
        mac::FloatingPanelWindow::configure(window);  // nothing while it has no window yet
    }
    bool compositing() const override { return true; }
};

}  // namespace

std::unique_ptr<PanelWindowBackend> PanelWindowBackend::create() {
    return std::make_unique<MacPanelWindowBackend>();
}

}  // namespace zd
