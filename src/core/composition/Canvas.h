#pragma once
// The drawing surface that composition paints on: the final picture, a preview tile, a
// placeholder. The compositor, the menu bar renderer and the placeholders are written once
// against this interface; the platform supplies it (QPainter on a premultiplied ARGB bitmap),
// and tests record the calls to check exact geometry.
//
// Coordinates are canvas pixels: one unit is one pixel of the bitmap, the origin is the
// lower-left corner and y grows upward, so the top edge lies at y = height. Images follow the
// same orientation when a source rectangle is taken from them: a source rectangle with y = 0
// starts at the image's bottom row (the last row of zd::Image's top-down pixel store).
//
// Graphics state (saved and restored as a whole by save/restore): the translation, the clip
// and the shadow. Nothing is antialiased or interpolated in a way the core depends on.

#include <optional>
#include <string>
#include <string_view>

#include "model/Color.h"
#include "model/Geometry.h"
#include "model/Image.h"

namespace zd {

// How an image draw combines with what is below it.
enum class CompositeOp {
    sourceOver,  // ordinary painting over what is there
    copy,        // replaces the destination rectangle's pixels, alpha included
};

// Weights of the system font that composition uses.
enum class FontWeight { regular, medium, semibold, bold };

// A drop shadow under the shapes drawn while it is in force.
struct Shadow {
    Point offset;           // canvas pixels, y upward: (0, -16) casts the shadow 16 pixels down
    double blurRadius = 0;  // canvas pixels; a Gaussian-like blur of about this radius
    Color color;            // straight alpha

    friend bool operator==(const Shadow&, const Shadow&) = default;
};

// Metrics of one string set in the system font at one size and weight.
struct TextMetrics {
    double width = 0;      // advance width of the whole string
    double capHeight = 0;  // height of capital letters above the baseline, positive
    double descender = 0;  // depth below the baseline, negative (as the font reports it)

    friend bool operator==(const TextMetrics&, const TextMetrics&) = default;
};

class Canvas {
  public:
    virtual ~Canvas() = default;

    // Size of the bitmap in pixels.
    virtual int width() const = 0;
    virtual int height() const = 0;

    // Pushes / pops the graphics state (translation, clip, shadow). Unbalanced restores are
    // ignored.
    virtual void save() = 0;
    virtual void restore() = 0;
    // Moves the origin by (dx, dy) for everything drawn afterwards.
    virtual void translate(double dx, double dy) = 0;

    // Puts a shadow in force for every draw that follows, until the
    // state is restored or the shadow is cleared with std::nullopt.
    virtual void setShadow(const std::optional<Shadow>& shadow) = 0;

    // Fills a rectangle with a colour, source-over.
    virtual void fillRect(const Rect& rect, const Color& color) = 0;
    // Fills a rectangle with rounded corners of the given radius, source-over.
    virtual void fillRoundedRect(const Rect& rect, double cornerRadius, const Color& color) = 0;
    // Narrows the clip to a rounded rectangle (intersected with the clip in force).
    virtual void clipToRoundedRect(const Rect& rect, double cornerRadius) = 0;
    // Fills / strokes the ellipse inscribed in a rectangle. The stroke is centred on the
    // ellipse's outline.
    virtual void fillEllipse(const Rect& rect, const Color& color) = 0;
    virtual void strokeEllipse(const Rect& rect, double lineWidth, const Color& color) = 0;

    // Draws the part `source` of `image` (image pixels, y = 0 at the image's bottom row) into
    // `destination` (canvas units), stretched to fill it, at opacity 1. A source rectangle of
    // all zeros means the whole image. Interpolation is the platform's smooth default.
    virtual void drawImage(const Image& image, const Rect& source, const Rect& destination,
                           CompositeOp op) = 0;

    // Measures a string in the system font at `size` (canvas pixels) and `weight`.
    virtual TextMetrics measureText(std::string_view text, double size,
                                    FontWeight weight) const = 0;
    // Draws a string in the system font. `origin` is the lower-left corner of the line: the
    // baseline lies at origin.y - descender (descender being negative), as text is drawn at a
    // point on the platform whose layout this system follows.
    virtual void drawText(std::string_view text, const Point& origin, double size,
                          FontWeight weight, const Color& color) = 0;

    // Natural size of a named symbol ("apple.logo", "wifi", "battery.50percent", …) at a point
    // size, weight regular, in canvas pixels; nothing when the symbol is not available.
    virtual std::optional<Size> symbolSize(std::string_view name, double pointSize) const = 0;
    // Draws a named symbol at its natural size, in the plain colour `color` (its shape only),
    // source-over, with the symbol's lower-left corner at `origin`. Returns false, drawing
    // nothing, when the symbol is not available.
    virtual bool drawSymbol(std::string_view name, double pointSize, const Point& origin,
                            const Color& color) = 0;

    // Ends drawing and returns the bitmap as an image of width() × height() pixels. The canvas
    // is not drawn on afterwards.
    virtual Image finish() = 0;
};

}  // namespace zd
