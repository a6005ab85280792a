#pragma once
// The target's menu bars read through the accessibility bus (AT-SPI): GTK and Qt applications
// publish their widget tree there, menu bars and the names of their menus included, in the
// language the application runs in.

#include <mutex>

#include "env/AccessibleMenuBackend.h"

namespace zd::x11 {

class AtspiMenuBackend : public AccessibleMenuBackend {
  public:
    std::optional<std::vector<std::vector<std::string>>> menuBars(std::int32_t pid) override;

  private:
    // libatspi keeps one connection per process and can't be set up again after it is closed:
    // it is opened on first use, with the session bus this process has then, and kept.
    bool connect();
    std::mutex mutex_;
    bool tried_ = false;
    bool connected_ = false;
};

}  // namespace zd::x11
