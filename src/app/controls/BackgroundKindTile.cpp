#include "controls/BackgroundKindTile.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include "controls/AppPalette.h"
#include "controls/CheckerboardView.h"
#include "controls/SymbolPainter.h"

namespace zd::app {

namespace {

QString tooltipFor(BackgroundKind kind) {
    switch (kind) {
        case BackgroundKind::transparent:
            return QStringLiteral("Transparent");
        case BackgroundKind::color:
            return QStringLiteral("Color");
        case BackgroundKind::image:
            return QStringLiteral("Image");
    }
    return {};
}

}  // namespace

BackgroundKindTile::BackgroundKindTile(BackgroundKind kind, QWidget* parent)
    : SelectableTile(Look{8, 0.18, 0.08, 1.5, 1.0}, parent), kind_(kind) {
    setToolTip(tooltipFor(kind));
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void BackgroundKindTile::setColor(const QColor& color) {
    color_ = color;
    update();
}

void BackgroundKindTile::setImagePath(const QString& path) {
    imagePath_ = path;
    update();
}

void BackgroundKindTile::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    paintTile(painter);
    const QRectF content = QRectF(rect()).adjusted(6, 6, -6, -6);
    const QColor secondary = secondaryColor(palette());
    QPainterPath clip;
    clip.addRoundedRect(content, 6, 6);
    painter.save();
    painter.setClipPath(clip);
    switch (kind_) {
        case BackgroundKind::transparent:
            paintCheckerboard(painter, content, 6);
            break;
        case BackgroundKind::color:
            painter.fillRect(content, color_);
            break;
        case BackgroundKind::image: {
            const QImage picture = imagePath_.isEmpty() ? QImage() : QImage(imagePath_);
            if (!picture.isNull()) {
                painter.setRenderHint(QPainter::SmoothPixmapTransform);
                painter.drawImage(content, picture);
            } else {
                painter.fillRect(content, withOpacity(secondary, 0.15));
                paintSymbol(painter, "photo", 18, content.center(), secondary);
            }
            break;
        }
    }
    painter.restore();
    painter.setPen(QPen(withOpacity(secondary, 0.25), 0.5));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(content.adjusted(0.25, 0.25, -0.25, -0.25), 5.75, 5.75);
}

}  // namespace zd::app
