// Zephyrdock, the application: the main window over the shared capture run.
#include <QApplication>
#include <QStyleFactory>

#include <iostream>

#include "shell/ZephyrdockApp.h"

int main(int argc, char** argv) {
    QApplication app(argc, argv);
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
