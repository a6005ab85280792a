#include "capture/CaptureEngine.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "env/Environment.h"

namespace zd::CaptureEngine {

int pixelsFor(double points, double density) {
    const double pixels = points * density;
    if (!(pixels > 0))
        return 0;  // also NaN
    if (pixels >= static_cast<double>(std::numeric_limits<int>::max())) {
        return std::numeric_limits<int>::max();
    }
    return static_cast<int>(pixels);
}

WindowCaptureConfiguration windowConfiguration(const Rect& frame, double density) {
    WindowCaptureConfiguration config;
    config.width = pixelsFor(frame.width, density);
    config.height = pixelsFor(frame.height, density);
    config.showsCursor = false;
    config.capturesAudio = false;
    config.scalesToFit = false;
    return config;
}

Task<Expected<Image, CaptureFailure>> captureWindow(const Environment& env, CaptureTarget target) {
    if (!env.capture || !env.workers)
        co_return unexpected(CaptureFailure::of(CaptureError::permissionDenied));
    CaptureBackend& backend = *env.capture;
    auto content = co_await onWorker(*env.workers, [&] { return backend.shareableContent(); });
    if (!content)
        co_return unexpected(CaptureFailure::of(CaptureError::permissionDenied));
    const auto& windows = content->windows;
    auto window = std::find_if(windows.begin(), windows.end(),
                               [&](const ShareableWindow& w) { return w.windowID == target.id; });
    if (window == windows.end())
        co_return unexpected(CaptureFailure::of(CaptureError::windowNotFound));
    const ShareableWindow& chosen = *window;
    const WindowCaptureConfiguration config =
        windowConfiguration(chosen.frame, chosen.pixelDensity);
    auto picture =
        co_await onWorker(*env.workers, [&] { return backend.captureWindow(chosen, config); });
    if (picture)
        picture->setPixelsPerPoint(chosen.pixelDensity);
    co_return picture;
}

bool isCGImageBlank(const Image& image) {
    const int w = image.width();
    const int h = image.height();
    if (w <= 0 || h <= 0)
        return true;
    if (image.pixels().size() < static_cast<std::size_t>(w) * static_cast<std::size_t>(h)) {
        return false;  // a picture that can't be tested counts as not blank
    }
    for (int r = 0; r < 5; ++r) {
        for (int c = 0; c < 5; ++c) {
            const auto x = static_cast<int>(static_cast<long long>(c) * w / 5);
            const auto y = static_cast<int>(static_cast<long long>(r) * h / 5);
            if (Image::alphaOf(image.pixel(x, y)) != 0)
                return false;
        }
    }
    return true;
}

}  // namespace zd::CaptureEngine
