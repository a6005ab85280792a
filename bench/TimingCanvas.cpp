#include "TimingCanvas.h"

#include "PngWriter.h"

#include <ctime>

namespace zd::bench {

double processCpuSeconds() {
    timespec t{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &t);
    return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_nsec) * 1e-9;
}

TimingCanvas::TimingCanvas(std::unique_ptr<QtCanvas> inner, StageTimes& times)
    : inner_(std::move(inner)), times_(times) {}

template <typename F>
auto TimingCanvas::timed(const std::string& stage, F&& f) const {
    const StageTimer timer(times_, stage);
    return f();
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
    const double cpuStarted = processCpuSeconds();
    inner_->drawImage(image, source, destination, op);
    const auto shadow = inner_->shadowTime() - shadowBefore;
    const auto wall = Clock::now() - started;
    const double cpu = processCpuSeconds() - cpuStarted;
    // The canvas tells the shadow's wall time; its CPU share is taken in the same proportion.
    const double share =
        wall.count() > 0 ? static_cast<double>(shadow.count()) / static_cast<double>(wall.count())
                         : 0.0;
    times_.add("shadow", shadow, cpu * share);
    times_.add("window drawing", wall - shadow, cpu * (1 - share));
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
    std::unique_ptr<QtCanvas> canvas;
    {
        const StageTimer timer(times_, "canvas allocation");
        canvas = std::make_unique<QtCanvas>(width, height);
    }
    if (!canvas->isValid())
        return nullptr;
    return std::make_unique<TimingCanvas>(std::move(canvas), times_);
}

std::optional<Image> TimingCodec::load(const std::string& path) const {
    const StageTimer timer(*times_, "background load");
    return codec_.load(path);
}

std::optional<std::vector<std::uint8_t>> TimingCodec::encodePNG(const Image& image) const {
    PngWriter::Timings timings;
    const double cpuStarted = processCpuSeconds();
    const auto started = std::chrono::steady_clock::now();
    auto png = PngWriter::encode(image, PngWriter::Options{}, &timings);
    times_->add("PNG encode", std::chrono::steady_clock::now() - started,
                processCpuSeconds() - cpuStarted);
    // Rows are converted and filtered on the same threads as they are compressed: how the
    // threads' time splits between the two.
    const double rows = std::chrono::duration<double>(timings.rows).count();
    const double deflate = std::chrono::duration<double>(timings.deflate).count();
    times_->add("PNG: rows, threads' time", timings.rows, rows);
    times_->add("PNG: deflate, threads' time", timings.deflate, deflate);
    return png;
}

}  // namespace zd::bench
