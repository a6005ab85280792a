#include "QtCanvas.h"

#include <QFontMetricsF>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <functional>
#include <new>

#include "ImageScaling.h"
#include "LargeBuffers.h"
#include "NamedSymbol.h"
#include "ShadowBlur.h"
#include "ShadowLayer.h"
#include "SystemFont.h"

namespace zd {

namespace {

QColor toQColor(const Color& c) {
    auto unit = [](double v) { return std::isfinite(v) ? std::clamp(v, 0.0, 1.0) : 0.0; };
    return QColor::fromRgbF(static_cast<float>(unit(c.red)), static_cast<float>(unit(c.green)),
                            static_cast<float>(unit(c.blue)), static_cast<float>(unit(c.alpha)));
}

bool isFiniteRect(const Rect& r) {
    return std::isfinite(r.x) && std::isfinite(r.y) && std::isfinite(r.width) &&
           std::isfinite(r.height);
}

bool isWhole(double v) {
    return std::abs(v - std::round(v)) < 1e-9;
}

}  // namespace

QtCanvas::QtCanvas(int width, int height) {
    if (width <= 0 || height <= 0)
        return;
    image_ = LargeBuffers::transparentImage(width, height);
    if (image_.isNull())
        return;
    width_ = width;
    height_ = height;
    target_ = QImage(reinterpret_cast<uchar*>(image_.mutablePixels().data()), width, height,
                     static_cast<qsizetype>(width) * 4, QImage::Format_ARGB32_Premultiplied);
    if (target_.isNull())
        return;
    target_.setDotsPerMeterX(SystemFont::kDotsPerMeter);
    target_.setDotsPerMeterY(SystemFont::kDotsPerMeter);
    painter_ = std::make_unique<QPainter>(&target_);
    if (!painter_->isActive()) {
        painter_.reset();
        target_ = QImage();
        return;
    }
    painter_->setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform |
                             QPainter::TextAntialiasing);
}

QtCanvas::~QtCanvas() {
    if (painter_)
        painter_->end();
}

QRectF QtCanvas::toDevice(const Rect& rect) const {
    const double x = rect.x + state_.dx;
    const double y = rect.y + state_.dy;
    return QRectF(x, height_ - y - rect.height, rect.width, rect.height);
}

void QtCanvas::save() {
    if (!painter_)
        return;
    saved_.push_back(state_);
    painter_->save();
}

void QtCanvas::restore() {
    if (!painter_ || saved_.empty())
        return;
    state_ = saved_.back();
    saved_.pop_back();
    painter_->restore();
}

void QtCanvas::translate(double dx, double dy) {
    if (!std::isfinite(dx) || !std::isfinite(dy))
        return;
    state_.dx += dx;
    state_.dy += dy;
}

void QtCanvas::setShadow(const std::optional<Shadow>& shadow) {
    state_.shadow = shadow;
}

template <typename Paint>
void QtCanvas::withShadow(const QRectF& bounds, const Paint& paint, const MaskFill& fill) {
    if (!painter_)
        return;
    if (state_.shadow && state_.shadow->color.alpha > 0)
        paintShadow(bounds, paint, fill);
    paint(*painter_);
}

void QtCanvas::paintShadow(const QRectF& bounds, const std::function<void(QPainter&)>& paint,
                           const MaskFill& fill) {
    const auto started = std::chrono::steady_clock::now();
    const Shadow& shadow = *state_.shadow;
    if (!std::isfinite(shadow.blurRadius) || !std::isfinite(shadow.offset.x) ||
        !std::isfinite(shadow.offset.y))
        return;
    const double sigma = ShadowBlur::sigmaForRadius(std::max(0.0, shadow.blurRadius));
    const int spread = ShadowBlur::spread(sigma) + 2;
    const QPointF offset(shadow.offset.x, -shadow.offset.y);  // y upward on the canvas

    // The mask covers the shape and the blur's reach, but no more than can land on the bitmap.
    QRect maskRect = bounds.toAlignedRect().adjusted(-spread, -spread, spread, spread);
    const QRect reachable = QRect(0, 0, width_, height_)
                                .translated(-offset.toPoint())
                                .adjusted(-spread, -spread, spread, spread);
    maskRect &= reachable;
    if (maskRect.isEmpty())
        return;

    QImage mask(maskRect.size(), QImage::Format_Alpha8);
    if (mask.isNull())
        return;
    mask.fill(0);
    if (fill) {
        fill(mask, maskRect.topLeft());
    } else {
        QPainter maskPainter(&mask);
        maskPainter.setRenderHints(painter_->renderHints());
        maskPainter.translate(-maskRect.topLeft());
        paint(maskPainter);
    }
    // Where the shape is opaque it hides its own shadow: no need to paint any there.
    const QRect covered = ShadowLayer::opaqueInterior(mask).translated(maskRect.topLeft());
    ShadowBlur::blur(mask.bits(), mask.width(), mask.height(),
                     static_cast<std::size_t>(mask.bytesPerLine()), sigma);

    const QColor color = toQColor(shadow.color);
    const QPointF at = QPointF(maskRect.topLeft()) + offset;
    const bool wholePixels = isWhole(offset.x()) && isWhole(offset.y());
    if (wholePixels && !painter_->hasClipping() && painter_->opacity() >= 1.0) {
        ShadowLayer::blend(target_, mask, at.toPoint(), color, covered);
    } else if (color.red() == 0 && color.green() == 0 && color.blue() == 0) {
        // A coverage mask draws as black; the shadow's alpha is the painter's opacity.
        painter_->save();
        painter_->setCompositionMode(QPainter::CompositionMode_SourceOver);
        painter_->setOpacity(color.alphaF());
        painter_->drawImage(at, mask);
        painter_->restore();
    } else {
        QImage tinted(mask.size(), QImage::Format_ARGB32_Premultiplied);
        tinted.fill(color);
        QPainter tint(&tinted);
        tint.setCompositionMode(QPainter::CompositionMode_DestinationIn);
        tint.drawImage(0, 0, mask);
        tint.end();
        painter_->save();
        painter_->setCompositionMode(QPainter::CompositionMode_SourceOver);
        painter_->drawImage(at, tinted);
        painter_->restore();
    }
    shadowTime_ += std::chrono::steady_clock::now() - started;
}

void QtCanvas::fillRect(const Rect& rect, const Color& color) {
    if (!isFiniteRect(rect) || rect.isEmpty())
        return;
    const QRectF r = toDevice(rect);
    const QColor c = toQColor(color);
    withShadow(r, [&](QPainter& p) { p.fillRect(r, c); });
}

void QtCanvas::fillRoundedRect(const Rect& rect, double cornerRadius, const Color& color) {
    if (!isFiniteRect(rect) || rect.isEmpty())
        return;
    const QRectF r = toDevice(rect);
    const double radius = std::isfinite(cornerRadius) ? std::max(0.0, cornerRadius) : 0.0;
    const QColor c = toQColor(color);
    withShadow(r, [&](QPainter& p) {
        QPainterPath path;
        path.addRoundedRect(r, radius, radius);
        p.fillPath(path, c);
    });
}

void QtCanvas::clipToRoundedRect(const Rect& rect, double cornerRadius) {
    if (!painter_ || !isFiniteRect(rect))
        return;
    const double radius = std::isfinite(cornerRadius) ? std::max(0.0, cornerRadius) : 0.0;
    QPainterPath path;
    path.addRoundedRect(toDevice(rect), radius, radius);
    painter_->setClipPath(path, painter_->hasClipping() ? Qt::IntersectClip : Qt::ReplaceClip);
}

void QtCanvas::fillEllipse(const Rect& rect, const Color& color) {
    if (!isFiniteRect(rect) || rect.isEmpty())
        return;
    const QRectF r = toDevice(rect);
    const QColor c = toQColor(color);
    withShadow(r, [&](QPainter& p) {
        p.save();
        p.setPen(Qt::NoPen);
        p.setBrush(c);
        p.drawEllipse(r);
        p.restore();
    });
}

void QtCanvas::strokeEllipse(const Rect& rect, double lineWidth, const Color& color) {
    if (!isFiniteRect(rect) || rect.isEmpty() || !(lineWidth > 0) || !std::isfinite(lineWidth))
        return;
    const QRectF r = toDevice(rect);
    const QColor c = toQColor(color);
    const double half = lineWidth / 2;
    withShadow(r.adjusted(-half, -half, half, half), [&](QPainter& p) {
        p.save();
        p.setPen(QPen(c, lineWidth));
        p.setBrush(Qt::NoBrush);
        p.drawEllipse(r);
        p.restore();
    });
}

void QtCanvas::drawImage(const Image& image, const Rect& source, const Rect& destination,
                         CompositeOp op) {
    if (!painter_ || image.isNull() || !isFiniteRect(source) || !isFiniteRect(destination) ||
        destination.isEmpty())
        return;
    const int iw = image.width();
    const int ih = image.height();
    // Wraps the image's pixels without copying; QImage treats them as read-only.
    QImage picture(reinterpret_cast<const uchar*>(image.pixels().data()), iw, ih,
                   static_cast<qsizetype>(iw) * 4, QImage::Format_ARGB32_Premultiplied);
    const bool whole = source == Rect{};
    QRectF src = whole
                     ? QRectF(0, 0, iw, ih)
                     : QRectF(source.x, ih - source.y - source.height, source.width, source.height);
    QRectF dst = toDevice(destination);
    // A source reaching outside the picture draws only the part inside, into the matching
    // part of the destination.
    const QRectF inside = src & QRectF(0, 0, iw, ih);
    if (inside.isEmpty())
        return;
    if (inside != src) {
        const double sx = dst.width() / src.width();
        const double sy = dst.height() / src.height();
        dst = QRectF(dst.x() + (inside.x() - src.x()) * sx, dst.y() + (inside.y() - src.y()) * sy,
                     inside.width() * sx, inside.height() * sy);
        src = inside;
    }
    ImageScaling::reduceForDrawing(picture, src, dst.size());

    const bool oneToOne = src.size() == dst.size() && isWhole(src.x()) && isWhole(src.y()) &&
                          isWhole(dst.x()) && isWhole(dst.y());
    const auto mode = op == CompositeOp::copy ? QPainter::CompositionMode_Source
                                              : QPainter::CompositionMode_SourceOver;
    MaskFill fill;
    if (oneToOne) {
        fill = [&](QImage& mask, QPoint origin) {
            ShadowLayer::alphaFromPicture(mask, origin, picture, src.toRect(),
                                          dst.topLeft().toPoint());
        };
    }
    withShadow(
        dst,
        [&](QPainter& p) {
            const auto previous = p.compositionMode();
            p.setCompositionMode(mode);
            if (oneToOne) {
                p.drawImage(dst.topLeft(), picture, src);
            } else {
                p.drawImage(dst, picture, src);
            }
            p.setCompositionMode(previous);
        },
        fill);
}

TextMetrics QtCanvas::measureText(std::string_view text, double size, FontWeight weight) const {
    if (!std::isfinite(size) || size <= 0)
        return {};
    const QFontMetricsF metrics(SystemFont::font(size, weight), &SystemFont::measuringDevice());
    const QString string = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    return {metrics.horizontalAdvance(string), metrics.capHeight(), -metrics.descent()};
}

void QtCanvas::drawText(std::string_view text, const Point& origin, double size, FontWeight weight,
                        const Color& color) {
    if (!painter_ || text.empty() || !std::isfinite(size) || size <= 0 ||
        !std::isfinite(origin.x) || !std::isfinite(origin.y))
        return;
    const QFont font = SystemFont::font(size, weight);
    const QFontMetricsF metrics(font, &target_);
    const QString string = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    // The origin is the line's lower-left corner; the baseline lies the descent above it.
    const double x = origin.x + state_.dx;
    const double baseline = height_ - (origin.y + state_.dy + metrics.descent());
    const QRectF bounds(x, baseline - metrics.ascent(), metrics.horizontalAdvance(string),
                        metrics.ascent() + metrics.descent());
    const QColor c = toQColor(color);
    withShadow(bounds.adjusted(-size, -1, size, 1), [&](QPainter& p) {
        p.save();
        p.setFont(font);
        p.setPen(c);
        p.drawText(QPointF(x, baseline), string);
        p.restore();
    });
}

std::optional<Size> QtCanvas::symbolSize(std::string_view name, double pointSize) const {
    const auto symbol = NamedSymbol::find(name, pointSize);
    if (!symbol)
        return std::nullopt;
    return Size{symbol->size.width(), symbol->size.height()};
}

bool QtCanvas::drawSymbol(std::string_view name, double pointSize, const Point& origin,
                          const Color& color) {
    const auto symbol = NamedSymbol::find(name, pointSize);
    if (!symbol || !std::isfinite(origin.x) || !std::isfinite(origin.y))
        return false;
    if (!painter_)
        return true;
    const QRectF box = toDevice({origin.x, origin.y, symbol->size.width(), symbol->size.height()});
    const QColor c = toQColor(color);
    withShadow(box, [&](QPainter& p) { symbol->paint(p, box.topLeft(), c); });
    return true;
}

Image QtCanvas::finish() {
    if (painter_) {
        painter_->end();
        painter_.reset();
    }
    target_ = QImage();
    saved_.clear();
    Image out = std::move(image_);
    image_ = Image();
    return out;
}

}  // namespace zd
