#include "ShadowLayer.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace zd {

namespace {

// Multiplies the four channels of a premultiplied pixel by f/255.
inline std::uint32_t scalePixel(std::uint32_t p, std::uint32_t f) {
    std::uint32_t rb = (p & 0x00ff00ffu) * f;
    rb = ((rb + ((rb >> 8) & 0x00ff00ffu) + 0x00800080u) >> 8) & 0x00ff00ffu;
    std::uint32_t ag = ((p >> 8) & 0x00ff00ffu) * f;
    ag = (ag + ((ag >> 8) & 0x00ff00ffu) + 0x00800080u) & 0xff00ff00u;
    return rb | ag;
}

bool rowIsOpaque(const uchar* row, int from, int to) {
    for (int x = from; x < to; ++x)
        if (row[x] != 255)
            return false;
    return true;
}

}  // namespace

void ShadowLayer::alphaFromPicture(QImage& mask, QPoint maskOrigin, const QImage& picture,
                                   QRect source, QPoint destination) {
    // The part of the drawn picture that falls on the mask, in bitmap coordinates.
    const QRect drawn(destination, source.size());
    const QRect overlap = drawn & QRect(maskOrigin, mask.size());
    for (int y = overlap.top(); y <= overlap.bottom(); ++y) {
        const auto* src = reinterpret_cast<const std::uint32_t*>(
            picture.constScanLine(source.y() + (y - destination.y())));
        uchar* out = mask.scanLine(y - maskOrigin.y());
        const int sx = source.x() + (overlap.left() - destination.x());
        const int mx = overlap.left() - maskOrigin.x();
        for (int i = 0; i < overlap.width(); ++i)
            out[mx + i] = static_cast<uchar>(src[sx + i] >> 24);
    }
}

QRect ShadowLayer::opaqueInterior(const QImage& mask) {
    const int w = mask.width();
    const int h = mask.height();
    if (w < 8 || h < 8)
        return {};
    // The opaque run through the middle row…
    const uchar* mid = mask.constScanLine(h / 2);
    int x0 = w / 2;
    int x1 = w / 2;
    if (mid[x0] != 255)
        return {};
    while (x0 > 0 && mid[x0 - 1] == 255)
        --x0;
    while (x1 < w && mid[x1] == 255)
        ++x1;
    // …and the rows above and below the middle that are opaque over that whole run.
    int y0 = h / 2;
    int y1 = h / 2 + 1;
    while (y0 > 0 && rowIsOpaque(mask.constScanLine(y0 - 1), x0, x1))
        --y0;
    while (y1 < h && rowIsOpaque(mask.constScanLine(y1), x0, x1))
        ++y1;
    return QRect(x0, y0, x1 - x0, y1 - y0);
}

void ShadowLayer::blend(QImage& target, const QImage& mask, QPoint at, const QColor& color,
                        QRect skip) {
    const QRgb premultiplied = qPremultiply(color.rgba());
    const QRect area = QRect(at, mask.size()) & target.rect();
    for (int y = area.top(); y <= area.bottom(); ++y) {
        const uchar* coverage = mask.constScanLine(y - at.y());
        auto* row = reinterpret_cast<std::uint32_t*>(target.scanLine(y));
        auto span = [&](int from, int to) {
            for (int x = from; x < to; ++x) {
                const std::uint32_t m = coverage[x - at.x()];
                if (m == 0)
                    continue;
                const std::uint32_t src = scalePixel(premultiplied, m);
                row[x] = src + scalePixel(row[x], 255u - (src >> 24));
            }
        };
        const int end = area.right() + 1;
        if (!skip.isEmpty() && y >= skip.top() && y <= skip.bottom()) {
            span(area.left(), std::min(end, skip.left()));
            span(std::max(area.left(), skip.right() + 1), end);
        } else {
            span(area.left(), end);
        }
    }
}

}  // namespace zd
