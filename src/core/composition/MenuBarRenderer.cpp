#include "composition/MenuBarRenderer.h"

#include <algorithm>

namespace zd::MenuBarRenderer {

namespace {

// Sizes below this would vanish; the bar is never drawn smaller.
constexpr double minimumScale = 0.1;

Color foreground(AppearanceMode mode) {
    return mode == AppearanceMode::dark ? Color::white(1.0) : Color::black();
}
Color barFill(AppearanceMode mode) {
    return mode == AppearanceMode::dark ? Color::white(0.1, 0.85) : Color::white(0.97, 0.85);
}
Color hairline(AppearanceMode mode) {
    return mode == AppearanceMode::dark ? Color::black(0.6) : Color::black(0.12);
}

// Text whose capitals are centred on the bar's middle: the line's origin sits below the
// baseline by the font's descender.
double textOriginY(const TextMetrics& metrics, double centerY) {
    return centerY - metrics.capHeight / 2 + metrics.descender;
}

void drawText(Canvas& canvas, const std::string& text, double x, double centerY, double size,
              FontWeight weight, const Color& color) {
    const TextMetrics metrics = canvas.measureText(text, size, weight);
    canvas.drawText(text, {x, textOriginY(metrics, centerY)}, size, weight, color);
}

// A missing symbol draws nothing; callers move their cursor on regardless.
void drawSymbol(Canvas& canvas, std::string_view name, double x, double centerY, const Color& color,
                double pointSize) {
    const auto size = canvas.symbolSize(name, pointSize);
    if (!size)
        return;
    canvas.drawSymbol(name, pointSize, {x, centerY - size->height / 2}, color);
}

// One item of the right cluster, with the cursor's moves around it.
struct ClusterItem {
    bool isText = false;
    std::string content;  // the text, or the symbol's name
    double size = 0;      // font size or symbol point size
    double before = 0;    // leftward move before drawing
    double after = 0;     // leftward move after drawing
};

// The cluster from right to left. Text items advance by their measured width; symbol items by
// fixed amounts, whatever the symbol's own width.
std::vector<ClusterItem> clusterItems(const Canvas& canvas, const MenuBarConfig& config, double c) {
    auto textWidth = [&](const std::string& text, double size) {
        return canvas.measureText(text, size, FontWeight::regular).width;
    };
    std::vector<ClusterItem> items;
    items.push_back({true, config.clockText, 13 * c, textWidth(config.clockText, 13 * c), 10 * c});
    if (config.showBattery) {
        const std::string percent = std::to_string(config.batteryPercent) + "%";
        items.push_back({true, percent, 13 * c, textWidth(percent, 13 * c), 6 * c});
        items.push_back(
            {false, std::string(batterySymbolName(config.batteryPercent)), 14 * c, 24 * c, 8 * c});
    }
    if (config.showControlCenter)
        items.push_back({false, "switch.2", 13 * c, 22 * c, 6 * c});
    if (config.showSpotlight)
        items.push_back({false, "magnifyingglass", 13 * c, 22 * c, 6 * c});
    if (config.showWiFi)
        items.push_back({false, "wifi", 13 * c, 22 * c, 6 * c});
    for (auto it = config.customAccessories.rbegin(); it != config.customAccessories.rend(); ++it) {
        items.push_back({true, *it, 14 * c, 12 * c + textWidth(*it, 14 * c), 0});
    }
    return items;
}

// The cluster in coordinates relative to the bar's lower-left corner.
void paintRightCluster(Canvas& canvas, double barWidth, double barHeight, AppearanceMode mode,
                       const MenuBarConfig& config, double c) {
    const Color color = foreground(mode);
    const double yc = barHeight / 2;
    double x = barWidth - 12 * c;
    for (const ClusterItem& item : clusterItems(canvas, config, c)) {
        x -= item.before;
        if (item.isText) {
            drawText(canvas, item.content, x, yc, item.size, FontWeight::regular, color);
        } else {
            drawSymbol(canvas, item.content, x, yc, color, item.size);
        }
        x -= item.after;
    }
}

}  // namespace

void draw(Canvas& canvas, const Rect& bar, AppearanceMode mode, const MenuBarConfig& config,
          double canvasScale) {
    const double c = std::max(canvasScale, minimumScale);
    const double w = bar.width;
    const double hb = bar.height;
    canvas.save();
    canvas.translate(bar.x, bar.y);

    if (config.hasBackground) {
        canvas.fillRect({0, 0, w, hb}, barFill(mode));
        canvas.fillRect({0, 0, w, std::max(0.5 * c, 0.5)}, hairline(mode));
    }

    const Color color = foreground(mode);
    const double yc = hb / 2;
    // The logo sits one pixel above centre at every scale, as on the real bar.
    drawSymbol(canvas, "apple.logo", 14 * c, yc + 1.0, color, 14 * c);

    double x = 14 * c + 22 * c;
    if (!config.appName.empty()) {
        drawText(canvas, config.appName, x, yc, 13 * c, FontWeight::semibold, color);
        x += canvas.measureText(config.appName, 13 * c, FontWeight::semibold).width + 16 * c;
    }
    const auto& titles = config.menuTitles.empty() ? defaultMenuTitles() : config.menuTitles;
    for (const std::string& title : titles) {
        drawText(canvas, title, x, yc, 13 * c, FontWeight::regular, color);
        x += canvas.measureText(title, 13 * c, FontWeight::regular).width + 14 * c;
    }

    paintRightCluster(canvas, w, hb, mode, config, c);
    canvas.restore();
}

void drawRightCluster(Canvas& canvas, const Rect& bar, AppearanceMode mode,
                      const MenuBarConfig& config, double canvasScale) {
    canvas.save();
    canvas.translate(bar.x, bar.y);
    paintRightCluster(canvas, bar.width, bar.height, mode, config,
                      std::max(canvasScale, minimumScale));
    canvas.restore();
}

double rightClusterWidth(const Canvas& canvas, const MenuBarConfig& config, double canvasScale) {
    const double c = std::max(canvasScale, minimumScale);
    double width = 12 * c;
    for (const ClusterItem& item : clusterItems(canvas, config, c))
        width += item.before + item.after;
    return width;
}

std::string_view batterySymbolName(int batteryPercent) {
    if (batteryPercent < 13)
        return "battery.0percent";
    if (batteryPercent < 38)
        return "battery.25percent";
    if (batteryPercent < 63)
        return "battery.50percent";
    if (batteryPercent < 88)
        return "battery.75percent";
    return "battery.100percent";
}

const std::vector<std::string>& defaultMenuTitles() {
    static const std::vector<std::string> titles{"File", "Edit", "View", "Window", "Help"};
    return titles;
}

}  // namespace zd::MenuBarRenderer
