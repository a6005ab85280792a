// Zephyrdock, the application: the main window over the shared capture run.
#include <QApplication>
#include <QLabel>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setApplicationName("Zephyrdock");
    QLabel window("Zephyrdock");
    window.setWindowTitle("Zephyrdock");
    window.resize(640, 400);
    window.show();
    return QApplication::exec();
}
