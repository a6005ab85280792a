#include "testing/RecordingCanvas.h"

#include <algorithm>

namespace zd {

using Kind = CanvasCall::Kind;

namespace {

// Characters, not bytes, so that measured widths don't depend on the script's encoding.
std::size_t codePoints(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char ch) {
        return (static_cast<unsigned char>(ch) & 0xC0u) != 0x80u;
    }));
}

}  // namespace

std::vector<CanvasCall> CanvasRecord::callsOf(CanvasCall::Kind kind) const {
    std::vector<CanvasCall> found;
    std::copy_if(calls.begin(), calls.end(), std::back_inserter(found),
                 [&](const CanvasCall& call) { return call.kind == kind; });
    return found;
}

RecordingCanvas::RecordingCanvas(int width, int height, std::shared_ptr<CanvasRecord> record,
                                 std::set<std::string> missingSymbols)
    : record_(record ? std::move(record) : std::make_shared<CanvasRecord>()),
      missingSymbols_(std::move(missingSymbols)) {
    record_->width = width;
    record_->height = height;
}

TextMetrics RecordingCanvas::metricsFor(std::string_view text, double size) {
    return {0.5 * size * static_cast<double>(codePoints(text)), 0.7 * size, -0.2 * size};
}

void RecordingCanvas::add(CanvasCall call) {
    call.offset = state_.offset;
    call.shadow = state_.shadow;
    record_->calls.push_back(std::move(call));
}

void RecordingCanvas::save() {
    add({.kind = Kind::save});
    saved_.push_back(state_);
}

void RecordingCanvas::restore() {
    add({.kind = Kind::restore});
    if (saved_.empty())
        return;
    state_ = saved_.back();
    saved_.pop_back();
}

void RecordingCanvas::translate(double dx, double dy) {
    add({.kind = Kind::translate, .point = {dx, dy}});
    state_.offset = {state_.offset.x + dx, state_.offset.y + dy};
}

void RecordingCanvas::setShadow(const std::optional<Shadow>& shadow) {
    state_.shadow = shadow;
    add({.kind = Kind::setShadow});
}

void RecordingCanvas::fillRect(const Rect& rect, const Color& color) {
    add({.kind = Kind::fillRect, .rect = rect, .color = color});
}

void RecordingCanvas::fillRoundedRect(const Rect& rect, double cornerRadius, const Color& color) {
    add({.kind = Kind::fillRoundedRect, .rect = rect, .color = color, .number = cornerRadius});
}

void RecordingCanvas::clipToRoundedRect(const Rect& rect, double cornerRadius) {
    add({.kind = Kind::clipToRoundedRect, .rect = rect, .number = cornerRadius});
}

void RecordingCanvas::fillEllipse(const Rect& rect, const Color& color) {
    add({.kind = Kind::fillEllipse, .rect = rect, .color = color});
}

void RecordingCanvas::strokeEllipse(const Rect& rect, double lineWidth, const Color& color) {
    add({.kind = Kind::strokeEllipse, .rect = rect, .color = color, .number = lineWidth});
}

void RecordingCanvas::drawImage(const Image& image, const Rect& source, const Rect& destination,
                                CompositeOp op) {
    add({.kind = Kind::drawImage,
         .rect = destination,
         .source = source,
         .op = op,
         .imageSize = {static_cast<double>(image.width()), static_cast<double>(image.height())},
         .imageId = image.storageId()});
}

TextMetrics RecordingCanvas::measureText(std::string_view text, double size, FontWeight) const {
    return metricsFor(text, size);
}

void RecordingCanvas::drawText(std::string_view text, const Point& origin, double size,
                               FontWeight weight, const Color& color) {
    add({.kind = Kind::drawText,
         .point = origin,
         .color = color,
         .number = size,
         .weight = weight,
         .text = std::string(text)});
}

std::optional<Size> RecordingCanvas::symbolSize(std::string_view name, double pointSize) const {
    if (missingSymbols_.contains(std::string(name)))
        return std::nullopt;
    return Size{pointSize, pointSize};
}

bool RecordingCanvas::drawSymbol(std::string_view name, double pointSize, const Point& origin,
                                 const Color& color) {
    if (missingSymbols_.contains(std::string(name)))
        return false;
    add({.kind = Kind::drawSymbol,
         .point = origin,
         .color = color,
         .number = pointSize,
         .text = std::string(name)});
    return true;
}

Image RecordingCanvas::finish() {
    record_->finished = true;
    return Image(record_->width, record_->height);
}

std::unique_ptr<Canvas> RecordingCanvasFactory::makeCanvas(int width, int height) const {
    if (width <= 0 || height <= 0)
        return nullptr;
    if (static_cast<long long>(width) * static_cast<long long>(height) > maxPixels)
        return nullptr;
    auto record = std::make_shared<CanvasRecord>();
    records_.push_back(record);
    return std::make_unique<RecordingCanvas>(width, height, record, missingSymbols);
}

}  // namespace zd
