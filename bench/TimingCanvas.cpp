#include "TimingCanvas.h"

#include "PngWriter.h"

namespace zd::bench {

TimingCanvas::TimingCanvas(std::unique_ptr<QtCanvas> inner, StageTimes& times)
    : inner_(std::move(inner)), times_(times) {}

template <typename F>
auto TimingCanvas::timed(const std::string& stage, F&& f) const {
    const auto started = Clock::now();
    if constexpr (std::is_void_v<decltype(f())>) {
        f();
        times_.add(stage, Clock::now() - started);
    } else {
        auto result = f();
        times_.add(stage, Clock::now() - started);
        return result;
    }
}

void TimingCanvas::restore() {
    inner_->restore();
    shadowInForce_ = false;
}

void TimingCanvas::setShadow(const std::optional<Shadow>& shadow) {
    inner_->setShadow(shadow);
    shadowInForce_ = shadow.has_value();
}

void TimingCanvas::fillRect(const Rect& rect, const Color& color) {
    timed(stage(), [&] { inner_->fillRect(rect, color); });
}
void TimingCanvas::fillRoundedRect(const Rect& rect, double cornerRadius, const Color& color) {
    timed(stage(), [&] { inner_->fillRoundedRect(rect, cornerRadius, color); });
}
void TimingCanvas::clipToRoundedRect(const Rect& rect, double cornerRadius) {
    inner_->clipToRoundedRect(rect, cornerRadius);
}
void TimingCanvas::fillEllipse(const Rect& rect, const Color& color) {
    timed(stage(), [&] { inner_->fillEllipse(rect, color); });
}
void TimingCanvas::strokeEllipse(const Rect& rect, double lineWidth, const Color& color) {
    timed(stage(), [&] { inner_->strokeEllipse(rect, lineWidth, color); });
}

void TimingCanvas::drawImage(const Image& image, const Rect& source, const Rect& destination,
                             CompositeOp op) {
    // The background comes first; the window is the next picture drawn; a captured bar after.
    const bool isWindow = !windowDrawn_ && (shadowInForce_ || backgroundDrawn_);
    if (!isWindow) {
        timed(stage(), [&] { inner_->drawImage(image, source, destination, op); });
        backgroundDrawn_ = true;
        return;
    }
    const auto shadowBefore = inner_->shadowTime();
    const auto started = Clock::now();
    inner_->drawImage(image, source, destination, op);
    const auto shadow = inner_->shadowTime() - shadowBefore;
    times_.add("shadow", shadow);
    times_.add("window drawing", Clock::now() - started - shadow);
    windowDrawn_ = true;
}

TextMetrics TimingCanvas::measureText(std::string_view text, double size, FontWeight weight) const {
    return timed("bar", [&] { return inner_->measureText(text, size, weight); });
}
void TimingCanvas::drawText(std::string_view text, const Point& origin, double size,
                            FontWeight weight, const Color& color) {
    timed("bar", [&] { inner_->drawText(text, origin, size, weight, color); });
}
std::optional<Size> TimingCanvas::symbolSize(std::string_view name, double pointSize) const {
    return inner_->symbolSize(name, pointSize);
}
bool TimingCanvas::drawSymbol(std::string_view name, double pointSize, const Point& origin,
                              const Color& color) {
    return timed("bar", [&] { return inner_->drawSymbol(name, pointSize, origin, color); });
}
Image TimingCanvas::finish() {
    return inner_->finish();
}

std::unique_ptr<Canvas> TimingCanvasFactory::makeCanvas(int width, int height) const {
    const auto started = Clock::now();
    auto canvas = std::make_unique<QtCanvas>(width, height);
    times_.add("canvas allocation", Clock::now() - started);
    if (!canvas->isValid())
        return nullptr;
    return std::make_unique<TimingCanvas>(std::move(canvas), times_);
}

std::optional<Image> TimingCodec::load(const std::string& path) const {
    const auto started = Clock::now();
    auto image = codec_.load(path);
    times_.add("background load", Clock::now() - started);
    return image;
}

std::optional<std::vector<std::uint8_t>> TimingCodec::encodePNG(const Image& image) const {
    PngWriter::Timings timings;
    auto png = PngWriter::encode(image, PngWriter::Options{}, &timings);
    times_.add("pixel conversion", timings.rows);
    times_.add("PNG encode", timings.deflate);
    return png;
}

}  // namespace zd::bench
