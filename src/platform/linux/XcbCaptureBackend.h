#pragma once
// Capture on X11 through the Composite extension: a window is redirected (automatically, so
// the screen is unchanged) and its own off-screen pixmap is read, which shows the window alone
// even where others cover it or it lies partly off the screen. A window is redirected on its
// first capture and stays so while the backend lives; that first capture waits a moment for
// the application to repaint into the new pixmap. Pictures are the screen's own pixels, never
// scaled: their density is the desktop's scale, which the listed windows and displays carry.

#include <chrono>
#include <mutex>
#include <set>

#include "EwmhClients.h"
#include "env/CaptureBackend.h"

namespace zd::x11 {

class XcbCaptureBackend : public CaptureBackend {
  public:
    explicit XcbCaptureBackend(
        std::shared_ptr<XcbConnection> connection,
        std::chrono::milliseconds repaintWait = std::chrono::milliseconds(250));
    ~XcbCaptureBackend() override;

    Expected<ShareableContent, std::string> shareableContent() override;
    Expected<Image, CaptureFailure> captureWindow(
        const ShareableWindow& window, const WindowCaptureConfiguration& configuration) override;

    // The window's pixels at their own size, without scaling; only `part` of it (inside its
    // border, in its own pixels) when given.
    Expected<Image, CaptureFailure> windowPixels(xcb_window_t window,
                                                 std::optional<Rect> part = std::nullopt);

    void setApplicationNames(ApplicationNames names) {
        clients_.setApplicationNames(std::move(names));
    }

  private:
    void ensureRedirected(xcb_window_t window);

    std::shared_ptr<XcbConnection> connection_;
    EwmhClients clients_;
    std::chrono::milliseconds repaintWait_;
    std::mutex mutex_;
    std::set<xcb_window_t> redirected_;
};

}  // namespace zd::x11
