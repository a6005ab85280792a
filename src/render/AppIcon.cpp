#include "AppIcon.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

namespace zd::render {

QImage drawAppIcon(int pixels) {
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    // Everything is laid out on a 100-unit grid; small sizes keep a wider margin so the tile
    // doesn't touch the edge of a 16-pixel cell.
    const double margin = pixels <= 24 ? 2.0 : 6.0;
    p.scale(pixels / 100.0, pixels / 100.0);
    const QRectF tile(margin, margin, 100 - 2 * margin, 100 - 2 * margin);

    QLinearGradient sky(tile.topLeft(), tile.bottomLeft());
    sky.setColorAt(0.0, QColor(0x5a, 0xc8, 0xfa));
    sky.setColorAt(1.0, QColor(0x3a, 0x4c, 0xd8));
    p.setPen(Qt::NoPen);
    p.setBrush(sky);
    p.drawRoundedRect(tile, 22, 22);

    // The window: a white card with a darker menu strip and three title-bar dots.
    const QRectF window(26, 34, 48, 34);
    p.setBrush(QColor(0, 0, 40, 60));
    p.drawRoundedRect(window.translated(0, 2.5), 5, 5);
    p.setBrush(Qt::white);
    p.drawRoundedRect(window, 5, 5);
    QPainterPath strip;
    strip.addRoundedRect(window, 5, 5);
    p.save();
    p.setClipPath(strip);
    p.setBrush(QColor(0xe6, 0xea, 0xf5));
    p.drawRect(QRectF(window.left(), window.top(), window.width(), 8));
    p.restore();
    const QColor dots[] = {QColor(0xff, 0x5f, 0x57), QColor(0xfe, 0xbc, 0x2e),
                           QColor(0x28, 0xc8, 0x40)};
    for (int i = 0; i < 3; ++i) {
        p.setBrush(dots[i]);
        p.drawEllipse(QPointF(window.left() + 5 + i * 5, window.top() + 4), 1.7, 1.7);
    }

    // The viewfinder's corners around it.
    QPen corner(Qt::white, pixels <= 24 ? 6.0 : 4.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    p.setPen(corner);
    p.setBrush(Qt::NoBrush);
    const QRectF frame(17, 24, 66, 54);
    const double arm = 11;
    auto cornerAt = [&](QPointF at, double dx, double dy) {
        QPainterPath path;
        path.moveTo(at.x() + dx * arm, at.y());
        path.lineTo(at);
        path.lineTo(at.x(), at.y() + dy * arm);
        p.drawPath(path);
    };
    cornerAt(frame.topLeft(), 1, 1);
    cornerAt(frame.topRight(), -1, 1);
    cornerAt(frame.bottomLeft(), 1, -1);
    cornerAt(frame.bottomRight(), -1, -1);
    return image;
}

}  // namespace zd::render
