#pragma once
// Resampling help for drawing a picture much smaller than it is. QPainter's smooth
// transform is bilinear, which skips source pixels once a picture shrinks below half its
// size (a preview tile of a 4K photo would shimmer). Halving with a 2×2 box first, as a
// mipmap does, keeps every source pixel's weight and is cheaper than one big area resample.

#include <QImage>
#include <QRectF>

namespace zd {

class ImageScaling {
  public:
    // A premultiplied ARGB picture of half the size (odd last row/column dropped), each
    // pixel the mean of a 2×2 block.
    static QImage halve(const QImage& image);

    // Halves `image` while drawing `source` into a rectangle of `destinationSize` would
    // shrink it below one half in both directions, and scales `source` to match.
    static void reduceForDrawing(QImage& image, QRectF& source, QSizeF destinationSize);
};

}  // namespace zd
