#include "DisplayProbe.h"

#include <xcb/xcb.h>

#include <cstdlib>

namespace zd::x11 {

DisplayProbe::DisplayProbe(const std::string& display)
    : connection_(xcb_connect(display.empty() ? nullptr : display.c_str(), nullptr)) {}

DisplayProbe::~DisplayProbe() {
    if (connection_)
        xcb_disconnect(connection_);
}

bool DisplayProbe::answers() {
    if (!connection_ || xcb_connection_has_error(connection_))
        return false;
    std::free(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
    return xcb_connection_has_error(connection_) == 0;
}

}  // namespace zd::x11
