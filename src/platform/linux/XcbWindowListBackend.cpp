#include "XcbWindowListBackend.h"

namespace zd::x11 {

Value XcbWindowListBackend::windowList(WindowListOption option) const {
    ValueArray records;
    for (const auto& client : clients_.clients()) {
        if (hasOption(option, WindowListOption::excludeDesktopElements) &&
            client.layer == Layer::desktop) {
            continue;
        }
        if (hasOption(option, WindowListOption::onScreenOnly) && !isViewable(client.id)) {
            continue;
        }
        records.push_back(EwmhClients::record(client));
    }
    return records;
}

bool XcbWindowListBackend::isViewable(xcb_window_t window) const {
    xcb_connection_t* c = connection_->get();
    XcbReply<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(c, xcb_get_window_attributes(c, window), nullptr));
    return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
}

}  // namespace zd::x11
