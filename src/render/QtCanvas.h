#pragma once
// The Canvas on QPainter, over a premultiplied ARGB bitmap that becomes the finished
// zd::Image without a copy. Canvas coordinates (origin lower left, y upward) are turned into
// the bitmap's (origin top left, y downward) here; QPainter's own transform stays the
// identity so that text and pictures are never drawn mirrored.
//
// Text is set in a system-like sans from Debian (Noto Sans, then DejaVu Sans), with Qt's
// font fallback reaching Noto CJK and Noto Arabic for scripts they lack. Needs a
// QGuiApplication for fonts.

#include <QImage>
#include <QPainter>

#include <chrono>
#include <functional>
#include <memory>
#include <vector>

#include "composition/Canvas.h"

namespace zd {

class QtCanvas final : public Canvas {
  public:
    // A transparent canvas; isValid() is false when the bitmap couldn't be made.
    QtCanvas(int width, int height);
    ~QtCanvas() override;

    bool isValid() const { return !target_.isNull(); }
    // Time spent making and blurring shadows so far, for the benchmark's stage figures.
    std::chrono::nanoseconds shadowTime() const { return shadowTime_; }

    int width() const override { return width_; }
    int height() const override { return height_; }

    void save() override;
    void restore() override;
    void translate(double dx, double dy) override;
    void setShadow(const std::optional<Shadow>& shadow) override;

    void fillRect(const Rect& rect, const Color& color) override;
    void fillRoundedRect(const Rect& rect, double cornerRadius, const Color& color) override;
    void clipToRoundedRect(const Rect& rect, double cornerRadius) override;
    void fillEllipse(const Rect& rect, const Color& color) override;
    void strokeEllipse(const Rect& rect, double lineWidth, const Color& color) override;
    void drawImage(const Image& image, const Rect& source, const Rect& destination,
                   CompositeOp op) override;

    TextMetrics measureText(std::string_view text, double size, FontWeight weight) const override;
    void drawText(std::string_view text, const Point& origin, double size, FontWeight weight,
                  const Color& color) override;

    std::optional<Size> symbolSize(std::string_view name, double pointSize) const override;
    bool drawSymbol(std::string_view name, double pointSize, const Point& origin,
                    const Color& color) override;

    Image finish() override;

  private:
    struct State {
        double dx = 0;
        double dy = 0;
        std::optional<Shadow> shadow;
    };

    // A canvas rectangle (after the translation) in the bitmap's coordinates.
    QRectF toDevice(const Rect& rect) const;
    // Paints `paint` (which draws with the painter it's given, in bitmap coordinates),
    // preceded by the shadow in force, if any. `bounds` encloses everything it paints.
    // Fills a shadow's coverage mask directly (mask, its top-left on the bitmap), where that
    // is quicker than painting the shape into it.
    using MaskFill = std::function<void(QImage&, QPoint)>;
    template <typename Paint>
    void withShadow(const QRectF& bounds, const Paint& paint, const MaskFill& fill = nullptr);
    void paintShadow(const QRectF& bounds, const std::function<void(QPainter&)>& paint,
                     const MaskFill& fill);

    int width_ = 0;
    int height_ = 0;
    Image image_;
    QImage target_;
    std::unique_ptr<QPainter> painter_;
    State state_;
    std::vector<State> saved_;
    std::chrono::nanoseconds shadowTime_{0};
};

}  // namespace zd
