#pragma once
// The X screens: each RandR monitor as a frame, the window manager's work area for the current
// desktop (_NET_WORKAREA) within it as the visible frame, in points (pixels over the desktop's
// scale, DesktopScale.h), with that scale as the backing scale. Top-left root coordinates. The
// main screen is the monitor of the focused window; the primary one the RandR primary.

#include <memory>

#include "EwmhClients.h"
#include "XcbConnection.h"
#include "env/ScreenBackend.h"

namespace zd::x11 {

class XcbScreenBackend : public ScreenBackend {
  public:
    explicit XcbScreenBackend(std::shared_ptr<XcbConnection> connection)
        : connection_(connection), clients_(std::move(connection)) {}
    std::optional<ScreenInfo> mainScreen() const override;
    std::optional<ScreenInfo> primaryScreen() const override;

  private:
    std::optional<ScreenInfo> screenOf(const Rect& monitor) const;

    std::shared_ptr<XcbConnection> connection_;
    EwmhClients clients_;
};

}  // namespace zd::x11
