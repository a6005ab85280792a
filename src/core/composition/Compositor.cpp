#include "composition/Compositor.h"
#include "composition/PixelCount.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <fstream>
#include <limits>
#include <memory>

#include "capture/WindowRecord.h"
#include "composition/Canvas.h"
#include "composition/MenuBarRenderer.h"
#include "env/CanvasFactory.h"
#include "env/Environment.h"
#include "env/ImageCodec.h"
#include "env/WindowListBackend.h"

namespace zd::Compositor {

namespace {

// Share of a 900-point-high screen that a 24-point menu bar takes.
constexpr double barShareOfHeight = 24.0 / 900.0;
// The width in points assumed for the main screen when there is none.
constexpr double fallbackScreenWidthPts = 1440.0;
constexpr double fallbackBackingScale = 2.0;
// The window's drop shadow, in canvas pixels whatever the canvas's or the window's scale.
const Shadow windowShadow{{0, -16.0}, 40.0, Color::black(0.45)};

void paintBackground(Canvas& canvas, const BackgroundChoice& background, const ImageCodec& codec,
                     double w, double h) {
    const Rect whole{0, 0, w, h};
    switch (background.kind) {
        case BackgroundKind::transparent:
            return;
        case BackgroundKind::color:
            canvas.fillRect(whole, background.fillColor);
            return;
        case BackgroundKind::image:
            break;
    }
    const std::optional<Image> picture = background.image(codec);
    if (!picture || picture->isNull()) {
        canvas.fillRect(whole, background.fillColor);
        return;
    }
    // Cover the canvas, centred, overflowing it on the longer axis.
    const double pw = picture->width();
    const double ph = picture->height();
    const double f = std::max(w / pw, h / ph);
    const Rect cover{(w - pw * f) / 2, (h - ph * f) / 2, pw * f, ph * f};
    canvas.drawImage(*picture, {0, 0, pw, ph}, cover, CompositeOp::sourceOver);
    // Whatever the picture leaves uncovered takes the background's colour.
    for (const Rect& rest : subtracting(whole, cover))
        canvas.fillRect(rest, background.fillColor);
}

void paintCapturedBar(Canvas& canvas, const Inputs& inputs, const Rect& bar, double c) {
    const Image& strip = *inputs.capturedMenuBar;
    const double sw = strip.width();
    const double sh = strip.height();
    canvas.drawImage(strip, {0, 0, sw, sh}, bar, CompositeOp::sourceOver);
    if (!inputs.menuBar.replaceAccessories)
        return;

    // Paint out the real status items with a two-pixel column of plain bar taken from just
    // left of them, then draw our own cluster over the smear.
    // A fraction of the strip's width; anything else (never written so) counts as no items.
    const double g = std::isfinite(inputs.statusItemsLeftFraction)
                         ? std::clamp(inputs.statusItemsLeftFraction, 0.0, 1.0)
                         : 1.0;
    const double w = inputs.canvas.width;
    const double erase =
        std::max(MenuBarRenderer::rightClusterWidth(canvas, inputs.menuBar, c) + 24.0 * c,
                 (1 - g) * w + 12.0 * c);
    const Rect column{std::max((g - 0.02) * sw, 0.0), 0, 2.0, sh};
    canvas.drawImage(strip, column, {w - erase, bar.y, erase, bar.height}, CompositeOp::copy);
    MenuBarRenderer::drawRightCluster(canvas, bar, inputs.mode, inputs.menuBar, c);
}

}  // namespace

Layout layout(const Inputs& inputs, const std::optional<ScreenInfo>& mainScreen,
              double realMenuBarHeightPts) {
    const double w = inputs.canvas.width;
    const double h = inputs.canvas.height;
    const double iw = inputs.windowImage.width();
    const double ih = inputs.windowImage.height();
    const double p = realMenuBarHeightPts;
    // Pixels per point of the image: the density it was captured at, so that screen lengths in
    // points and the image's pixels agree; the screen's own for an image that doesn't say.
    const double s = inputs.windowImage.pixelsPerPoint() > 0
                         ? inputs.windowImage.pixelsPerPoint()
                         : (mainScreen ? mainScreen->backingScaleFactor : fallbackBackingScale);
    Layout result;

    if (inputs.isFullDisplayCapture) {
        // The display's own bar, in the image's pixels, is cut off; the rest fills the canvas.
        const double mp = p * s;
        const double proportional = mp * (w / std::max(iw, 1.0));
        const double cap = std::max(60.0, 3 * h * barShareOfHeight);
        result.barHeight = std::min(cap, proportional);
        result.availableHeight = inputs.menuBar.visible ? h - result.barHeight : h;
        result.source = {0, 0, iw, std::max(ih - mp, 0.0)};
        result.destination = {0, 0, w, result.availableHeight};
        return result;
    }

    const double sh = mainScreen ? mainScreen->frame.height : 0;
    result.barHeight = (sh > 0 && p > 0) ? h * p / sh : std::max(h * barShareOfHeight, 8.0);
    result.availableHeight = inputs.menuBar.visible ? h - result.barHeight : h;
    const double a = result.availableHeight;
    // True to the window's size on screen, scaled only by the canvas; shrunk if too tall.
    const double sw = (mainScreen ? mainScreen->frame.width : fallbackScreenWidthPts) * s;
    const double k = std::min(w / std::max(sw, 1.0), a / std::max(ih, 1.0));
    result.source = {0, 0, iw, ih};
    result.destination = {(w - k * iw) / 2, (a - k * ih) / 2, k * iw, k * ih};
    return result;
}

Image render(const Inputs& inputs, const Platform& platform) {
    std::unique_ptr<Canvas> canvas = makeCanvasOfSize(platform.canvases, inputs.canvas);
    if (!canvas)
        return Image();

    const double w = inputs.canvas.width;
    const double h = inputs.canvas.height;
    canvas->save();
    paintBackground(*canvas, inputs.background, platform.codec, w, h);

    const Layout placed = layout(inputs, platform.mainScreen, platform.realMenuBarHeightPts);
    if (!inputs.isFullDisplayCapture && inputs.applyShadow) {
        canvas->save();
        canvas->setShadow(windowShadow);
        canvas->drawImage(inputs.windowImage, placed.source, placed.destination,
                          CompositeOp::sourceOver);
        canvas->restore();
    } else {
        canvas->drawImage(inputs.windowImage, placed.source, placed.destination,
                          CompositeOp::sourceOver);
    }

    if (inputs.menuBar.visible) {
        const Rect bar{0, h - placed.barHeight, w, placed.barHeight};
        const double c = w / 1440.0;
        if (inputs.capturedMenuBar && !inputs.capturedMenuBar->isNull()) {
            paintCapturedBar(*canvas, inputs, bar, c);
        } else {
            MenuBarRenderer::draw(*canvas, bar, inputs.mode, inputs.menuBar, c);
        }
    }
    canvas->restore();
    return canvas->finish();
}

std::optional<Platform> platformOf(const Environment& env) {
    if (!env.canvases || !env.images)
        return std::nullopt;
    const std::optional<ScreenInfo> screen =
        env.screens ? env.screens->mainScreen() : std::optional<ScreenInfo>();
    const double barPts = env.windowList ? realMenuBarHeightPts(*env.windowList) : 24.0;
    return Platform{*env.canvases, *env.images, screen, barPts};
}

Image render(const Inputs& inputs, const Environment& env) {
    const std::optional<Platform> platform = platformOf(env);
    return platform ? render(inputs, *platform) : Image();
}

Expected<std::vector<std::uint8_t>, OutputError> encodePNG(const Image& image,
                                                           const ImageCodec& codec) {
    if (image.isNull())
        return unexpected(OutputError::couldNotEncodePNG());
    auto data = codec.encodePNG(image);
    if (!data || data->empty())
        return unexpected(OutputError::couldNotEncodePNG());
    return std::move(*data);
}

Expected<void, OutputError> writeEncodedPNG(const std::vector<std::uint8_t>& data,
                                            const std::filesystem::path& path) {
    std::error_code ec;
    if (path.has_parent_path()) {
        std::filesystem::create_directories(path.parent_path(), ec);
        if (ec)
            return unexpected(OutputError::fromErrorCode(ec));
    }
    errno = 0;
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    if (out) {
        out.write(reinterpret_cast<const char*>(data.data()),
                  static_cast<std::streamsize>(data.size()));
        out.close();
    }
    if (!out) {
        const int err = errno != 0 ? errno : EIO;
        return unexpected(
            OutputError::fromErrorCode(std::error_code(err, std::generic_category())));
    }
    return {};
}

Expected<void, OutputError> writePNG(const Image& image, const std::filesystem::path& path,
                                     const ImageCodec& codec) {
    auto data = encodePNG(image, codec);
    if (!data)
        return unexpected(data.error());
    return writeEncodedPNG(*data, path);
}

double realMenuBarHeightPts(const std::optional<std::span<const Value>>& onScreenWindows) {
    constexpr double fallback = 24.0;
    if (!onScreenWindows)
        return fallback;
    for (const Value& window : *onScreenWindows) {
        if (WindowRecord::layer(window) != WindowRecord::menuBarLayer)
            continue;
        const WindowRecord::BoundsSize size = WindowRecord::boundsSize(window);
        if (size.readable && size.height && *size.height > 0)
            return *size.height;
    }
    return fallback;
}

double realMenuBarHeightPts(const WindowListBackend& windowList) {
    const Value list = windowList.windowList(WindowListOption::onScreenOnly);
    const ValueArray* windows = list.asArray();
    return realMenuBarHeightPts(windows ? std::optional<std::span<const Value>>(*windows)
                                        : std::nullopt);
}

std::vector<Rect> subtracting(const Rect& self, const Rect& other) {
    const bool intersects = self.minX() < other.maxX() && other.minX() < self.maxX() &&
                            self.minY() < other.maxY() && other.minY() < self.maxY() &&
                            !self.isEmpty() && !other.isEmpty();
    if (!intersects)
        return {self};
    std::vector<Rect> parts;
    if (self.minY() < other.minY()) {
        parts.push_back({self.minX(), self.minY(), self.width, other.minY() - self.minY()});
    }
    if (other.maxY() < self.maxY()) {
        parts.push_back({self.minX(), other.maxY(), self.width, self.maxY() - other.maxY()});
    }
    const double t = std::max(self.minY(), other.minY());
    const double u = std::min(self.maxY(), other.maxY());
    if (self.minX() < other.minX()) {
        parts.push_back({self.minX(), t, other.minX() - self.minX(), u - t});
    }
    if (other.maxX() < self.maxX()) {
        parts.push_back({other.maxX(), t, self.maxX() - other.maxX(), u - t});
    }
    return parts;
}

}  // namespace zd::Compositor
