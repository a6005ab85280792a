// Zephyrdock, the application: the main window over the shared capture run.
#include <QApplication>
#include <QLabel>
#include <QStyleFactory>

#include "common/PlatformEnvironment.h"
#include "controls/AppPalette.h"
#include "env/Environment.h"

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setApplicationName("Zephyrdock");
    // Our own palette on a plain style, so a dark desktop gets a dark Zephyrdock.
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    bool dark = false;
    if (auto platform = zd::PlatformEnvironment::create({})) {
        if (auto* appearance = (*platform)->environment().appearance)
            dark = zd::app::desktopIsDark(*appearance);
    }
    QApplication::setPalette(zd::app::appPalette(dark));
    QLabel window("Zephyrdock");
    window.setWindowTitle("Zephyrdock");
    window.resize(640, 400);
    window.show();
    return QApplication::exec();
}
