#pragma once
// The window list on X11: the window manager's managed windows, front-most first, as records
// with the window server's keys. Desktop windows are left out when asked.

#include "EwmhClients.h"
#include "env/WindowListBackend.h"

namespace zd::x11 {

class XcbWindowListBackend : public WindowListBackend {
  public:
    explicit XcbWindowListBackend(std::shared_ptr<XcbConnection> connection)
        : clients_(std::move(connection)) {}
    Value windowList(WindowListOption option) const override;

  private:
    EwmhClients clients_;
};

}  // namespace zd::x11
