#pragma once
// The pixel work of a drop shadow that QPainter would do slowly: taking a picture's alpha as
// the shadow's coverage, finding the part that the shape itself will cover (no shadow needs
// painting there), and blending the blurred coverage in the shadow's colour onto the bitmap.

#include <QColor>
#include <QImage>
#include <QPoint>
#include <QRect>

namespace zd {

class ShadowLayer {
  public:
    // Copies the alpha of `picture`'s pixels at `source` into `mask` (Format_Alpha8), placed as
    // the picture is drawn 1:1 with its top-left at `destination`; `maskOrigin` is the mask's
    // top-left in the same (bitmap) coordinates.
    static void alphaFromPicture(QImage& mask, QPoint maskOrigin, const QImage& picture,
                                 QRect source, QPoint destination);

    // A rectangle of `mask` (Format_Alpha8) where every value is 255, found around the
    // middle; empty when there is none worth having.
    static QRect opaqueInterior(const QImage& mask);

    // Source-over of `color` at the coverage `mask` onto `target` (premultiplied ARGB) with the
    // mask's top-left at `at`, leaving out `skip` (bitmap coordinates), which the shape covers.
    static void blend(QImage& target, const QImage& mask, QPoint at, const QColor& color,
                      QRect skip);
};

}  // namespace zd
