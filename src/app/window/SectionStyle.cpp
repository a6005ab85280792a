#include "window/SectionStyle.h"

#include <QFrame>
#include <QLayout>

#include <QPainter>
#include <QPixmap>

#include "controls/AppPalette.h"
#include "controls/SymbolPainter.h"

namespace zd::app {

QFont uiFont(int pixelSize, bool semibold) {
    QFont font;
    font.setPixelSize(pixelSize);
    if (semibold)
        font.setWeight(QFont::DemiBold);
    return font;
}

QLabel* sectionLabel(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text.toUpper(), parent);
    QFont font = uiFont(10, true);
    font.setLetterSpacing(QFont::AbsoluteSpacing, 0.6);
    label->setFont(font);
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, secondaryColor(palette));
    label->setPalette(palette);
    return label;
}

QLabel* helperLine(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);  // the texts hold angle brackets of their own
    label->setFont(uiFont(11));
    label->setWordWrap(true);
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, withOpacity(palette.color(QPalette::WindowText), 0.75));
    label->setPalette(palette);
    return label;
}

QLabel* secondaryText(const QString& text, int pixelSize, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);
    label->setFont(uiFont(pixelSize));
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, secondaryColor(palette));
    label->setPalette(palette);
    return label;
}

void clearLayout(QLayout* layout) {
    while (QLayoutItem* item = layout->takeAt(0)) {
        if (QWidget* widget = item->widget())
            widget->deleteLater();
        if (QLayout* inner = item->layout())
            clearLayout(inner);
        delete item;
    }
}

QIcon symbolIcon(std::string_view name, int pixels, const QColor& color) {
    QIcon icon;
    for (int scale : {1, 2}) {
        QPixmap pixmap(pixels * scale, pixels * scale);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(scale, scale);
        paintSymbol(painter, name, pixels * 0.8, QPointF(pixels / 2.0, pixels / 2.0), color);
        painter.end();
        pixmap.setDevicePixelRatio(scale);
        icon.addPixmap(pixmap);
    }
    return icon;
}

QWidget* divider(QWidget* parent) {
    auto* line = new QFrame(parent);
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Plain);
    QPalette palette = line->palette();
    palette.setColor(QPalette::WindowText, withOpacity(secondaryColor(palette), 0.3));
    line->setPalette(palette);
    return line;
}

}  // namespace zd::app
