#pragma once
// The X screen: the root window's size as the frame, the window manager's work area for the
// current desktop (_NET_WORKAREA) as the visible frame, in points (pixels over the desktop's
// scale, DesktopScale.h), with that scale as the backing scale. Top-left coordinates.

#include <memory>

#include "XcbConnection.h"
#include "env/ScreenBackend.h"

namespace zd::x11 {

class XcbScreenBackend : public ScreenBackend {
  public:
    explicit XcbScreenBackend(std::shared_ptr<XcbConnection> connection)
        : connection_(std::move(connection)) {}
    std::optional<ScreenInfo> mainScreen() const override;

  private:
    std::shared_ptr<XcbConnection> connection_;
};

}  // namespace zd::x11
