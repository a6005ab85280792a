#pragma once
// Fonts need a QGuiApplication; render tests run on Qt's offscreen platform.

#include <QGuiApplication>

#include <cstdlib>

namespace zd::testing {

inline void ensureGuiApp() {
    static int argc = 1;
    static char name[] = "zd_render_tests";
    static char* argv[] = {name, nullptr};
    if (QGuiApplication::instance() == nullptr) {
        setenv("QT_QPA_PLATFORM", "offscreen", 0);
        static QGuiApplication app(argc, argv);
    }
}

}  // namespace zd::testing
