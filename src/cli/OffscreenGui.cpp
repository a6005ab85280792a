#include "OffscreenGui.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <memory>
#include <thread>

namespace zd::cli {

namespace {

QtMessageHandler qtHandler = nullptr;

// Qt's note that XDG_RUNTIME_DIR is unset says nothing to the user of a command line.
void quietMessages(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (message.startsWith(QStringLiteral("QStandardPaths:")))
        return;
    if (qtHandler)
        qtHandler(type, context, message);
}

}  // namespace

void ensureOffscreenGui() {
    if (QCoreApplication::instance())
        return;
    qtHandler = qInstallMessageHandler(quietMessages);
    // "-platform offscreen" rather than QT_QPA_PLATFORM, which programs started from here
    // would inherit.
    static int argc = 3;
    static char name[] = "zephyrdock";
    static char platformOption[] = "-platform";
    static char platform[] = "offscreen";
    static char* argv[] = {name, platformOption, platform, nullptr};
    // The target's menu titles are read through libatspi on a worker thread, and libatspi keeps
    // its D-Bus connection on GLib's default context: Qt's GLib event dispatcher would dispatch
    // that connection on this thread at the same time. Qt's own dispatcher leaves it alone. Set
    // for this process only, so that programs started from here don't inherit it.
    const bool keepNoGlib = qEnvironmentVariableIsSet("QT_NO_GLIB");
    qputenv("QT_NO_GLIB", "1");
    static QGuiApplication app(argc, argv);
    if (!keepNoGlib)
        qunsetenv("QT_NO_GLIB");
}

bool processEventsUntil(const std::function<bool()>& done, std::chrono::milliseconds limit) {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!done()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}

}  // namespace zd::cli
