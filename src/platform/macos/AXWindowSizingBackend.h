#pragma once
// Sizing and placing another program's windows through the Accessibility interface
// ("AXMainWindow", "AXWindows", "AXSize", "AXPosition"). A window handle stands for an
// accessibility element this backend keeps until it is destroyed.

#include <map>
#include <memory>
#include <mutex>

#include "env/WindowSizingBackend.h"

namespace zd::mac {

class AXWindowSizingBackend : public WindowSizingBackend {
  public:
    AXWindowSizingBackend();
    ~AXWindowSizingBackend() override;
    AXWindowSizingBackend(const AXWindowSizingBackend&) = delete;
    AXWindowSizingBackend& operator=(const AXWindowSizingBackend&) = delete;

    std::optional<SizableWindow> mainWindow(std::int32_t pid) override;
    std::vector<SizableWindow> windows(std::int32_t pid) override;
    bool setSize(SizableWindow window, Size size) override;
    bool setPosition(SizableWindow window, Point topLeft) override;
    bool isProcessTrusted(bool prompt) override;

  private:
    struct Elements;
    std::unique_ptr<Elements> elements_;
};

}  // namespace zd::mac
