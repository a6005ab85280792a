#pragma once
// The window server's list of windows through CGWindowListCopyWindowInfo, each record handed
// over with the system's own keys.

#include "env/WindowListBackend.h"

namespace zd::mac {

class CGWindowListBackend : public WindowListBackend {
  public:
    Value windowList(WindowListOption option) const override;
};

}  // namespace zd::mac
