#include "XcbCaptureBackend.h"

#include <xcb/composite.h>

#include <algorithm>
#include <cmath>
#include <thread>

namespace zd::x11 {

namespace {

std::string describe(const xcb_generic_error_t* error, const char* what) {
    return std::string(what) + " failed (X error " + std::to_string(error ? error->error_code : 0) +
           ")";
}

}  // namespace

XcbCaptureBackend::XcbCaptureBackend(std::shared_ptr<XcbConnection> connection,
                                     std::chrono::milliseconds repaintWait)
    : connection_(std::move(connection)), clients_(connection_), repaintWait_(repaintWait) {}

XcbCaptureBackend::~XcbCaptureBackend() {
    std::lock_guard lock(mutex_);
    for (xcb_window_t window : redirected_) {
        xcb_composite_unredirect_window(connection_->get(), window,
                                        XCB_COMPOSITE_REDIRECT_AUTOMATIC);
    }
    xcb_flush(connection_->get());
}

Expected<ShareableContent, std::string> XcbCaptureBackend::shareableContent() {
    if (!connection_->hasComposite()) {
        return unexpected(std::string("The X server has no Composite extension"));
    }
    ShareableContent content;
    const double scale = connection_->scale();
    // Each monitor is a display, the primary first: the full-display picture takes its size.
    std::uint32_t number = 0;
    for (const auto& monitor : connection_->monitors()) {
        ShareableDisplay display;
        display.displayID = ++number;
        display.origin = Point{monitor.frame.x / scale, monitor.frame.y / scale};
        display.width = static_cast<int>(monitor.frame.width / scale);
        display.height = static_cast<int>(monitor.frame.height / scale);
        display.pixelDensity = scale;
        content.displays.push_back(display);
    }
    for (const auto& client : clients_.clients()) {
        ShareableWindow window;
        window.pixelDensity = scale;
        window.windowID = client.id;
        window.frame = client.bounds.value_or(Rect{});
        if (client.pid) {
            window.owningApplication =
                ShareableApplication{*client.pid, client.ownerName.value_or("")};
        }
        if (!client.title.empty())
            window.title = client.title;
        window.windowLayer = client.layer;
        content.windows.push_back(std::move(window));
    }
    return content;
}

void XcbCaptureBackend::ensureRedirected(xcb_window_t window) {
    {
        std::lock_guard lock(mutex_);
        if (!redirected_.insert(window).second)
            return;
    }
    xcb_composite_redirect_window(connection_->get(), window, XCB_COMPOSITE_REDIRECT_AUTOMATIC);
    xcb_flush(connection_->get());
    // The new pixmap holds only what was visible; covered parts arrive as the application
    // answers the exposures.
    std::this_thread::sleep_for(repaintWait_);
}

Expected<Image, CaptureFailure> XcbCaptureBackend::windowPixels(xcb_window_t window,
                                                                std::optional<Rect> part) {
    xcb_connection_t* c = connection_->get();
    XcbReply<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(c, xcb_get_geometry(c, window), nullptr));
    if (!geometry)
        return unexpected(CaptureFailure::system("The window is gone"));
    ensureRedirected(window);

    xcb_pixmap_t pixmap = xcb_generate_id(c);
    XcbReply<xcb_generic_error_t> error(
        xcb_request_check(c, xcb_composite_name_window_pixmap_checked(c, window, pixmap)));
    if (error) {
        // A relaunched application may get the window number its previous instance had, on a
        // window nobody has redirected yet: redirect it afresh and try once more.
        {
            std::lock_guard lock(mutex_);
            redirected_.erase(window);
        }
        ensureRedirected(window);
        error.reset(
            xcb_request_check(c, xcb_composite_name_window_pixmap_checked(c, window, pixmap)));
    }
    if (error) {
        // Unmapped windows (another desktop, minimised) have no pixmap to read.
        return unexpected(
            CaptureFailure::system(describe(error.get(), "Naming the window pixmap")));
    }
    // The pixmap holds the border too; the window's own pixels start inside it.
    const int border = geometry->border_width;
    int left = 0;
    int top = 0;
    int width = geometry->width;
    int height = geometry->height;
    if (part) {
        left = std::clamp(static_cast<int>(std::lround(part->x)), 0, width);
        top = std::clamp(static_cast<int>(std::lround(part->y)), 0, height);
        width = std::clamp(static_cast<int>(std::lround(part->width)), 0, width - left);
        height = std::clamp(static_cast<int>(std::lround(part->height)), 0, height - top);
    }
    if (width <= 0 || height <= 0) {
        xcb_free_pixmap(c, pixmap);
        return unexpected(CaptureFailure::of(CaptureError::noContent));
    }
    xcb_generic_error_t* rawError = nullptr;
    XcbReply<xcb_get_image_reply_t> reply(xcb_get_image_reply(
        c,
        xcb_get_image(c, XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap,
                      static_cast<std::int16_t>(border + left),
                      static_cast<std::int16_t>(border + top), static_cast<std::uint16_t>(width),
                      static_cast<std::uint16_t>(height), ~0u),
        &rawError));
    XcbReply<xcb_generic_error_t> imageError(rawError);
    xcb_free_pixmap(c, pixmap);
    xcb_flush(c);
    if (!reply)
        return unexpected(CaptureFailure::system(describe(imageError.get(), "Reading the window")));

    const auto length = static_cast<std::size_t>(xcb_get_image_data_length(reply.get()));
    const auto pixels = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    if (length < pixels * 4) {
        return unexpected(CaptureFailure::system("Unsupported pixel format of depth " +
                                                 std::to_string(reply->depth)));
    }
    // 32 bits a pixel in the machine's order: 0xAARRGGBB for depth 32 (premultiplied, as X
    // renders), 0x??RRGGBB for depth 24 where the top byte means nothing.
    const auto* data = reinterpret_cast<const std::uint32_t*>(xcb_get_image_data(reply.get()));
    std::vector<std::uint32_t> argb(data, data + pixels);
    if (reply->depth != 32) {
        for (auto& p : argb)
            p |= 0xff000000u;
    }
    return Image(width, height, std::move(argb));
}

Expected<Image, CaptureFailure> XcbCaptureBackend::captureWindow(
    const ShareableWindow& window, const WindowCaptureConfiguration& configuration) {
    if (configuration.width <= 0 || configuration.height <= 0) {
        return unexpected(CaptureFailure::of(CaptureError::noContent));
    }
    // The window as the user sees it: its frame and title bar where the window manager draws
    // them, without a client-side shadow. The pixels are the screen's own, at the window's
    // density, which is what the configuration asks for: nothing is scaled.
    auto seen = clients_.footprint(window.windowID);
    if (!seen)
        return unexpected(CaptureFailure::system("The window is gone"));
    const Rect part{seen->visible.x - seen->topLevelRect.x, seen->visible.y - seen->topLevelRect.y,
                    seen->visible.width, seen->visible.height};
    return windowPixels(seen->topLevel, part);
}

}  // namespace zd::x11
