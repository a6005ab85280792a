#include "WindowPid.h"

#include <xcb/res.h>

#include <cstdlib>
#include <memory>

namespace zd::x11 {

namespace {

template <class T>
using Reply = std::unique_ptr<T, decltype(&std::free)>;

}  // namespace

std::optional<std::int32_t> windowPid(xcb_connection_t* c, xcb_window_t window,
                                      xcb_atom_t netWmPid) {
    Reply<xcb_get_property_reply_t> property(
        xcb_get_property_reply(c, xcb_get_property(c, 0, window, netWmPid, XCB_ATOM_CARDINAL, 0, 1),
                               nullptr),
        &std::free);
    if (property && property->format == 32 && xcb_get_property_value_length(property.get()) == 4) {
        return static_cast<std::int32_t>(
            *static_cast<const std::uint32_t*>(xcb_get_property_value(property.get())));
    }
    xcb_res_client_id_spec_t wanted{window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    Reply<xcb_res_query_client_ids_reply_t> ids(
        xcb_res_query_client_ids_reply(c, xcb_res_query_client_ids(c, 1, &wanted), nullptr),
        &std::free);
    if (!ids)
        return std::nullopt;
    for (auto it = xcb_res_query_client_ids_ids_iterator(ids.get()); it.rem;
         xcb_res_client_id_value_next(&it)) {
        if ((it.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) &&
            xcb_res_client_id_value_value_length(it.data) >= 1) {
            const std::uint32_t pid = *xcb_res_client_id_value_value(it.data);
            if (pid > 0)
                return static_cast<std::int32_t>(pid);
        }
    }
    return std::nullopt;
}

}  // namespace zd::x11
