#include "composition/Placeholders.h"
#include "composition/PixelCount.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>

#include "composition/Canvas.h"
#include "env/CanvasFactory.h"

namespace zd {

namespace {

struct WindowColors {
    Color body;
    Color titleBar;
    Color line;  // the title bar's edge and the text bars
};

WindowColors colorsFor(AppearanceMode mode) {
    if (mode == AppearanceMode::dark) {
        return {Color::white(0.13), Color::white(0.18), Color::white(1.0, 0.18)};
    }
    return {Color::white(0.99), Color::white(0.95), Color::black(0.16)};
}

// The close, minimise and zoom buttons, from the left; the same in both appearances.
constexpr std::array<Color, 3> buttonColors{
    Color{1.0, 0.37, 0.34, 1.0}, Color{1.0, 0.74, 0.18, 1.0}, Color{0.2, 0.78, 0.27, 1.0}};

// Widths of the text bars in units of u, one per row.
constexpr std::array<double, 12> textBarWidths{600, 920,  760, 1080, 540, 880,
                                               700, 1020, 620, 800,  720, 540};

std::int64_t truncatedForKey(double length) {
    if (!std::isfinite(length) || std::abs(length) >= 9.2e18)
        return 0;
    return static_cast<std::int64_t>(length);
}

}  // namespace

std::string Placeholders::cacheKey(AppearanceMode mode, Size size) {
    return std::string(rawValue(mode)) + "-" + std::to_string(truncatedForKey(size.width)) + "x" +
           std::to_string(truncatedForKey(size.height));
}

Image Placeholders::window(AppearanceMode mode, Size size) {
    const std::string key = cacheKey(mode, size);
    if (auto found = windowCache_.find(key); found != windowCache_.end())
        return found->second;
    Image image = makeWindow(mode, size);
    if (!image.isNull())
        windowCache_.emplace(key, image);
    return image;
}

Image Placeholders::fullDisplay(AppearanceMode mode, Size size) {
    const std::string key = cacheKey(mode, size);
    if (auto found = fullDisplayCache_.find(key); found != fullDisplayCache_.end()) {
        return found->second;
    }
    std::unique_ptr<Canvas> canvas = makeCanvasOfSize(canvases_, size);
    if (!canvas)
        return Image();
    drawFullDisplay(*canvas, mode, size);
    Image image = canvas->finish();
    fullDisplayCache_.emplace(key, image);
    return image;
}

Image Placeholders::makeWindow(AppearanceMode mode, Size size) const {
    std::unique_ptr<Canvas> canvas = makeCanvasOfSize(canvases_, size);
    if (!canvas)
        return Image();
    drawWindow(*canvas, mode, size);
    return canvas->finish();
}

void Placeholders::drawWindow(Canvas& canvas, AppearanceMode mode, Size size) {
    const double w = size.width;
    const double h = size.height;
    // Everything scales with the height only.
    const double u = h / 1000.0;
    const WindowColors colors = colorsFor(mode);
    const Rect whole{0, 0, w, h};

    canvas.fillRoundedRect(whole, 18 * u, colors.body);
    canvas.save();
    canvas.clipToRoundedRect(whole, 18 * u);
    canvas.fillRect({0, h - 56 * u, w, 56 * u}, colors.titleBar);
    canvas.fillRect({0, h - 56 * u, w, std::max(u, 1.0)}, colors.line);
    canvas.restore();

    for (std::size_t i = 0; i < buttonColors.size(); ++i) {
        const double x = 24 * u * static_cast<double>(i + 1);
        canvas.fillEllipse({x, h - 28 * u - 7 * u, 14 * u, 14 * u}, buttonColors[i]);
    }

    // Bars are not shortened at the window's edge; the image's edge cuts them off.
    for (std::size_t row = 0; row < textBarWidths.size(); ++row) {
        const double y = h - 56 * u - 60 * u - 56 * u * static_cast<double>(row);
        if (y < 50 * u)
            break;
        canvas.fillRoundedRect({60 * u, y, u * textBarWidths[row], 14 * u}, 4 * u, colors.line);
    }
}

void Placeholders::drawFullDisplay(Canvas& canvas, AppearanceMode mode, Size size) const {
    const double w = size.width;
    const double h = size.height;
    const Shadow shadow{{0, -h / 90}, std::max(h / 30, 4.0), Color::black(0.45)};
    const Image back = makeWindow(mode, {0.4 * w, 0.45 * h});
    const Image front = makeWindow(mode, {0.5 * w, 0.55 * h});

    auto drawAt = [&](const Image& image, Point origin) {
        if (image.isNull())
            return;
        const double iw = image.width();
        const double ih = image.height();
        canvas.save();
        canvas.setShadow(shadow);
        canvas.drawImage(image, {0, 0, iw, ih}, {origin.x, origin.y, iw, ih},
                         CompositeOp::sourceOver);
        canvas.restore();
    };
    drawAt(back, {0.5 * w, 0.06 * h});
    drawAt(front, {0.06 * w, 0.12 * h});
}

}  // namespace zd
