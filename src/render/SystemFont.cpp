#include "SystemFont.h"

#include <QStringList>

#include <algorithm>

namespace zd {

QFont SystemFont::font(double pixelSize, FontWeight weight) {
    QFont font;
    font.setFamilies(QStringList{QStringLiteral("Noto Sans"), QStringLiteral("DejaVu Sans"),
                                 QStringLiteral("Noto Sans CJK SC"),
                                 QStringLiteral("Noto Sans Arabic")});
    font.setStyleHint(QFont::SansSerif);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setKerning(true);
    // With the bitmap at 72 dpi a point is a pixel.
    font.setPointSizeF(std::max(pixelSize, 0.01));
    switch (weight) {
        case FontWeight::regular:
            font.setWeight(QFont::Normal);
            break;
        case FontWeight::medium:
            font.setWeight(QFont::Medium);
            break;
        case FontWeight::semibold:
            font.setWeight(QFont::DemiBold);
            break;
        case FontWeight::bold:
            font.setWeight(QFont::Bold);
            break;
    }
    return font;
}

const QImage& SystemFont::measuringDevice() {
    static const QImage device = [] {
        QImage image(1, 1, QImage::Format_ARGB32_Premultiplied);
        image.setDotsPerMeterX(kDotsPerMeter);
        image.setDotsPerMeterY(kDotsPerMeter);
        return image;
    }();
    return device;
}

}  // namespace zd
