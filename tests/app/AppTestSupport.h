#pragma once
// Widget tests run on Qt's offscreen platform, in one QApplication per test program, with
// the application's Light palette; helpers read pixels off grabbed widgets.

#include <gtest/gtest.h>
#include <QApplication>
#include <QImage>
#include <QStyleFactory>
#include <QWidget>

#include <cstdlib>

#include "controls/AppPalette.h"

namespace zd::testing {

inline void ensureApp() {
    static int argc = 1;
    static char name[] = "zd_app_tests";
    static char* argv[] = {name, nullptr};
    if (QApplication::instance() == nullptr) {
        setenv("QT_QPA_PLATFORM", "offscreen", 0);
        // Kept to the end of the process: destroyed among the static objects, after Qt's own
        // are gone, it would crash on the way out.
        auto* app = new QApplication(argc, argv);  // NOLINT(cppcoreguidelines-owning-memory)
        (void)app;
        QApplication::setStyle(QStyleFactory::create("Fusion"));
        QApplication::setPalette(app::appPalette(false));
    }
}

// A fixture whose members may be widgets: the application comes first.
struct AppTest : ::testing::Test {
    AppTest() { ensureApp(); }
};

// The widget as drawn, one pixel per point.
inline QImage grabbed(QWidget& widget) {
    return widget.grab().toImage().convertToFormat(QImage::Format_ARGB32);
}

inline int brightness(QRgb pixel) {
    return qGray(pixel);
}

}  // namespace zd::testing
