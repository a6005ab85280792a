#pragma once
// The window list on X11: the window manager's managed windows, front-most first, as records
// with the window server's keys. Desktop windows, and windows not shown now, are left out
// when asked.

#include "EwmhClients.h"
#include "env/WindowListBackend.h"

namespace zd::x11 {

class XcbWindowListBackend : public WindowListBackend {
  public:
    explicit XcbWindowListBackend(std::shared_ptr<XcbConnection> connection)
        : connection_(connection), clients_(std::move(connection)) {}
    Value windowList(WindowListOption option) const override;

    void setApplicationNames(ApplicationNames names) {
        clients_.setApplicationNames(std::move(names));
    }

  private:
    bool isViewable(xcb_window_t window) const;

    std::shared_ptr<XcbConnection> connection_;
    EwmhClients clients_;
};

}  // namespace zd::x11
