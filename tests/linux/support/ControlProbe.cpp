#include "ControlProbe.h"

#include "linux/XcbConnection.h"

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <thread>

namespace zd::testing {

std::vector<x11::ClientWindow> probeWindows() {
    auto connection = x11::XcbConnection::open();
    return connection ? x11::EwmhClients(*connection).clients() : std::vector<x11::ClientWindow>{};
}

std::optional<double> meanLuminance(const Rect& area) {
    auto connection = x11::XcbConnection::open();
    if (!connection || area.isEmpty())
        return std::nullopt;
    xcb_connection_t* c = (*connection)->get();
    std::unique_ptr<xcb_get_image_reply_t, decltype(&std::free)> image(
        xcb_get_image_reply(
            c,
            xcb_get_image(c, XCB_IMAGE_FORMAT_Z_PIXMAP, (*connection)->root(),
                          static_cast<std::int16_t>(area.x), static_cast<std::int16_t>(area.y),
                          static_cast<std::uint16_t>(area.width),
                          static_cast<std::uint16_t>(area.height), ~0u),
            nullptr),
        &std::free);
    if (!image || image->depth < 24)
        return std::nullopt;
    const auto* data = xcb_get_image_data(image.get());
    const int length = xcb_get_image_data_length(image.get());
    double sum = 0;
    int count = 0;
    for (int i = 0; i + 3 < length; i += 4) {  // B, G, R, X
        sum += 0.0722 * data[i] + 0.7152 * data[i + 1] + 0.2126 * data[i + 2];
        ++count;
    }
    if (count == 0)
        return std::nullopt;
    return sum / count;
}

bool followRealTime(ManualClock& clock, const std::function<bool()>& done,
                    std::chrono::milliseconds limit) {
    using namespace std::chrono_literals;
    const auto start = std::chrono::steady_clock::now();
    while (!done()) {
        if (std::chrono::steady_clock::now() - start > limit)
            return false;
        std::this_thread::sleep_for(20ms);
        clock.advance(20ms);
    }
    return true;
}

}  // namespace zd::testing
