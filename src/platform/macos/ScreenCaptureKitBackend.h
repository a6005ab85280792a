#pragma once
// Windows and displays through ScreenCaptureKit: the shareable content, and one frame of a
// window by itself, by the screenshot manager from macOS 14 and by a one-frame stream on 13.

#include "env/CaptureBackend.h"

namespace zd::mac {

class ScreenCaptureKitBackend : public CaptureBackend {
  public:
    Expected<ShareableContent, std::string> shareableContent() override;
    Expected<Image, CaptureFailure> captureWindow(
        const ShareableWindow& window, const WindowCaptureConfiguration& configuration) override;
};

}  // namespace zd::mac
