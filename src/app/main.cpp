// Zephyrdock, the application: the main window over the shared capture run.
#include <QApplication>
#include <QStyleFactory>

#include <iostream>

#include "shell/ZephyrdockApp.h"

int main(int argc, char** argv) {
    // The target's menu titles are read through libatspi on a worker thread, and libatspi keeps
    // its D-Bus connection on GLib's default context, which Qt's GLib event dispatcher would
    // dispatch on this thread at the same time: Qt's own dispatcher leaves it alone. For this
    // process only; the programs it starts don't inherit it.
    const bool keepNoGlib = qEnvironmentVariableIsSet("QT_NO_GLIB");
    qputenv("QT_NO_GLIB", "1");
    QApplication app(argc, argv);
    if (!keepNoGlib)
        qunsetenv("QT_NO_GLIB");
    QApplication::setApplicationName("Zephyrdock");
    QApplication::setApplicationVersion(ZD_VERSION);
    QGuiApplication::setDesktopFileName("app.zephyrdock.Zephyrdock");
    // The main window's close ends the program (see ZephyrdockApp), not the last window.
    QApplication::setQuitOnLastWindowClosed(false);
    // Our own palette on a plain style, so a dark desktop gets a dark Zephyrdock.
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    zd::app::ZephyrdockApp zephyrdock;
    zd::app::ZephyrdockApp::Options options;
    if (const char* settings = std::getenv("ZEPHYRDOCK_SETTINGS"))
        options.settingsPath = settings;
    if (auto failure = zephyrdock.start(options)) {
        std::cerr << "Zephyrdock: " << *failure << '\n';
        return 1;
    }
    return QApplication::exec();
}
