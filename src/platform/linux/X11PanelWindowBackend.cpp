// The floating panel on X11: EWMH's "all desktops" (_NET_WM_DESKTOP 0xFFFFFFFF) on the window,
// and the compositing manager as the owner of the _NET_WM_CM_S0 selection.
#include "common/PanelWindowBackend.h"

#include <QGuiApplication>

#include "linux/XcbConnection.h"

namespace zd {

namespace {

constexpr std::uint32_t kAllDesktops = 0xFFFFFFFF;
constexpr std::uint32_t kSourceApplication = 1;  // EWMH source indication: a normal program

class X11PanelWindowBackend : public PanelWindowBackend {
  public:
    explicit X11PanelWindowBackend(std::shared_ptr<x11::XcbConnection> connection)
        : connection_(std::move(connection)) {
        const char name[] = "_NET_WM_CM_S0";
        x11::XcbReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
            connection_->get(), xcb_intern_atom(connection_->get(), 0, sizeof name - 1, name),
            nullptr));
        if (reply)
            compositorSelection_ = reply->atom;
    }

    void floatOnAllDesktops(std::uintptr_t window) override {
        const auto id = static_cast<xcb_window_t>(window);
        const xcb_atom_t desktop = connection_->atoms().netWmDesktop;
        // The property for a window not yet mapped; the message for one the manager holds.
        xcb_change_property(connection_->get(), XCB_PROP_MODE_REPLACE, id, desktop,
                            XCB_ATOM_CARDINAL, 32, 1, &kAllDesktops);
        connection_->sendToRoot(id, desktop, {kAllDesktops, kSourceApplication, 0, 0, 0});
        // A round trip: this connection isn't the toolkit's, and its map must come after.
        x11::XcbReply<xcb_get_input_focus_reply_t>(xcb_get_input_focus_reply(
            connection_->get(), xcb_get_input_focus(connection_->get()), nullptr));
    }

    bool compositing() const override {
        if (compositorSelection_ == XCB_ATOM_NONE)
            return false;
        x11::XcbReply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
            connection_->get(), xcb_get_selection_owner(connection_->get(), compositorSelection_),
            nullptr));
        return reply && reply->owner != XCB_NONE;
    }

  private:
    std::shared_ptr<x11::XcbConnection> connection_;
    xcb_atom_t compositorSelection_ = XCB_ATOM_NONE;
};

}  // namespace

std::unique_ptr<PanelWindowBackend> PanelWindowBackend::create() {
    // Native ids are X window ids only on Qt's xcb platform.
    if (QGuiApplication::platformName() != QLatin1String("xcb"))
        return nullptr;
    auto connection = x11::XcbConnection::open();
    if (!connection)
        return nullptr;
    return std::make_unique<X11PanelWindowBackend>(std::move(*connection));
}

}  // namespace zd
