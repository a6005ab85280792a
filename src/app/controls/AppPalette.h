#pragma once
// The application's colours in Light and Dark, so a dark desktop gets a dark Zephyrdock, and
// the two colours the controls speak of: the accent and the secondary label colour.

#include <QColor>
#include <QPalette>

namespace zd {
class AppearanceBackend;
}

namespace zd::app {

QPalette appPalette(bool dark);
// Reads the desktop's setting through the appearance backend; Light when it can't be told.
bool desktopIsDark(AppearanceBackend& backend);

QColor accentColor(const QPalette& palette);
QColor secondaryColor(const QPalette& palette);
// `color` at `opacity` times its own alpha.
QColor withOpacity(QColor color, double opacity);

}  // namespace zd::app
