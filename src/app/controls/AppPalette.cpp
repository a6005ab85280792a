#include "controls/AppPalette.h"

#include "control/AppearanceController.h"

namespace zd::app {

QPalette appPalette(bool dark) {
    const QColor window = dark ? QColor(30, 30, 30) : QColor(236, 236, 236);
    const QColor base = dark ? QColor(40, 40, 40) : QColor(255, 255, 255);
    const QColor text = dark ? QColor(255, 255, 255, 217) : QColor(0, 0, 0, 217);
    const QColor accent = dark ? QColor(10, 132, 255) : QColor(0, 122, 255);
    QPalette p;
    p.setColor(QPalette::Window, window);
    p.setColor(QPalette::WindowText, text);
    p.setColor(QPalette::Base, base);
    p.setColor(QPalette::AlternateBase, window);
    p.setColor(QPalette::Text, text);
    p.setColor(QPalette::Button, dark ? QColor(60, 60, 60) : QColor(255, 255, 255));
    p.setColor(QPalette::ButtonText, text);
    p.setColor(QPalette::Highlight, accent);
    p.setColor(QPalette::HighlightedText, Qt::white);
    p.setColor(QPalette::ToolTipBase, base);
    p.setColor(QPalette::ToolTipText, text);
    // The secondary label colour.
    p.setColor(QPalette::PlaceholderText, dark ? QColor(255, 255, 255, 140) : QColor(0, 0, 0, 128));
    p.setColor(QPalette::Light, dark ? QColor(80, 80, 80) : QColor(255, 255, 255));
    p.setColor(QPalette::Mid, dark ? QColor(70, 70, 70) : QColor(200, 200, 200));
    p.setColor(QPalette::Dark, dark ? QColor(20, 20, 20) : QColor(160, 160, 160));
    p.setColor(QPalette::Disabled, QPalette::Text, withOpacity(text, 0.4));
    p.setColor(QPalette::Disabled, QPalette::ButtonText, withOpacity(text, 0.4));
    p.setColor(QPalette::Disabled, QPalette::WindowText, withOpacity(text, 0.4));
    return p;
}

bool desktopIsDark(AppearanceBackend& backend) {
    return AppearanceController::current(backend) == AppearanceController::Mode::dark;
}

QColor accentColor(const QPalette& palette) {
    return palette.color(QPalette::Highlight);
}

QColor secondaryColor(const QPalette& palette) {
    return palette.color(QPalette::PlaceholderText);
}

QColor withOpacity(QColor color, double opacity) {
    color.setAlphaF(static_cast<float>(color.alphaF() * opacity));
    return color;
}

}  // namespace zd::app
