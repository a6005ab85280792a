#pragma once
// The system-like font that composition sets text in: Noto Sans, then DejaVu Sans, sized in
// pixels of a 72-dpi bitmap so that a point is a pixel, without hinting so that widths scale
// with the size as the platform's do. Scripts the first families lack fall back through
// Qt's font matching (Noto Sans CJK, Noto Sans Arabic).

#include <QFont>
#include <QImage>

#include "composition/Canvas.h"

namespace zd {

class SystemFont {
  public:
    // Dots per metre of a 72-dpi bitmap; canvases and measurements both use it.
    static constexpr int kDotsPerMeter = 2835;

    static QFont font(double pixelSize, FontWeight weight);
    // A tiny bitmap of the canvases' resolution to measure text against.
    static const QImage& measuringDevice();
};

}  // namespace zd
