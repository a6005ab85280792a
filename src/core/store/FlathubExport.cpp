#include "store/FlathubExport.h"

#include <algorithm>
#include <cmath>

#include "composition/Canvas.h"
#include "env/CanvasFactory.h"

namespace zd::FlathubExport {

namespace {

// The shadow per point: at density 2 the compositor's own (blur 40, 16 down).
constexpr double kBlurPerPoint = 20.0;
constexpr double kDropPerPoint = 8.0;
constexpr double kShadowAlpha = 0.45;

}  // namespace

double windowFactor(Size window, double scale) {
    if (window.width <= 0 || window.height <= 0)
        return 1.0;
    return std::min({1.0, logicalWindowLimit.width * scale / window.width,
                     logicalWindowLimit.height * scale / window.height});
}

double shadowMargin(double scale) {
    // The blur fades out at about one and a half times its radius; the drop adds to that below.
    return std::ceil((1.5 * kBlurPerPoint + kDropPerPoint) * scale);
}

Size canvas(Size window, double scale) {
    const double k = windowFactor(window, scale);
    const double m = shadowMargin(scale);
    return {std::round(window.width * k) + 2 * m, std::round(window.height * k) + 2 * m};
}

Size withinLimit(Size window, double scale) {
    return {std::min(window.width, logicalWindowLimit.width * scale),
            std::min(window.height, logicalWindowLimit.height * scale)};
}

Image render(const Image& window, Size canvasSize, double scale, const CanvasFactory& canvases) {
    auto canvas = canvases.makeCanvas(static_cast<int>(canvasSize.width),
                                      static_cast<int>(canvasSize.height));
    if (!canvas)
        return Image();
    const Size windowSize{static_cast<double>(window.width()),
                          static_cast<double>(window.height())};
    const Size natural = FlathubExport::canvas(windowSize, scale);
    // A preview tile holds the same picture, smaller.
    const double f =
        std::min({1.0, canvas->width() / natural.width, canvas->height() / natural.height});
    const double k = windowFactor(windowSize, scale) * f;
    const Rect destination{(canvas->width() - windowSize.width * k) / 2,
                           (canvas->height() - windowSize.height * k) / 2, windowSize.width * k,
                           windowSize.height * k};
    if (!window.isNull()) {
        canvas->save();
        canvas->setShadow(Shadow{{0, -kDropPerPoint * scale * f},
                                 kBlurPerPoint * scale * f,
                                 Color::black(kShadowAlpha)});
        canvas->drawImage(window, {0, 0, windowSize.width, windowSize.height}, destination,
                          CompositeOp::sourceOver);
        canvas->restore();
    }
    return canvas->finish();
}

}  // namespace zd::FlathubExport
