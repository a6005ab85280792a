#pragma once
// Tells whether an X display still answers, over a connection of its own, so that a wait
// notices a display server that went away at once instead of at its time-out.

#include <string>

struct xcb_connection_t;

namespace zd::x11 {

class DisplayProbe {
  public:
    // `display` as DISPLAY holds it (":3"); empty for DISPLAY itself.
    explicit DisplayProbe(const std::string& display = {});
    ~DisplayProbe();
    DisplayProbe(const DisplayProbe&) = delete;
    DisplayProbe& operator=(const DisplayProbe&) = delete;

    // One round trip to the server; false once the connection broke (or never came up).
    bool answers();

  private:
    xcb_connection_t* connection_ = nullptr;
};

}  // namespace zd::x11
