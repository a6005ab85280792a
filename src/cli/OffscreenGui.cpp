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
    static QGuiApplication app(argc, argv);
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
