// A program with a main window and the progress panel, driven by lines written to a FIFO
// ("show", "hide", "stage <text>"), for the session tests: it prints the panel's window id
// once it is shown, and ends when its main window closes.
#include <fcntl.h>
#include <unistd.h>

#include <QApplication>
#include <QSocketNotifier>
#include <QWidget>

#include <iostream>
#include <memory>

#include "common/PanelWindowBackend.h"
#include "panel/ProgressPanel.h"

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    if (argc < 2) {
        std::cerr << "usage: zd_panel_probe FIFO\n";
        return 2;
    }
    zd::CaptureProgressModel model;
    model.setCaptureStage("Posing the window");
    model.setShotsTotal(4);
    std::unique_ptr<zd::PanelWindowBackend> windows = zd::PanelWindowBackend::create();
    zd::app::ProgressPanel panel(windows.get());
    panel.setModel(&model);

    QWidget window;
    window.setWindowTitle("Panel probe");
    window.resize(320, 200);
    window.show();

    // Read and write: the FIFO then always has a writer, and never reads as ended.
    const int fd = open(argv[1], O_RDWR | O_NONBLOCK);
    if (fd < 0) {
        std::cerr << "cannot open " << argv[1] << "\n";
        return 2;
    }
    QSocketNotifier commands(fd, QSocketNotifier::Read);
    std::string pending;
    QObject::connect(&commands, &QSocketNotifier::activated, [&] {
        char buffer[256];
        const ssize_t n = read(fd, buffer, sizeof buffer);
        if (n > 0)
            pending.append(buffer, static_cast<std::size_t>(n));
        for (std::size_t end; (end = pending.find('\n')) != std::string::npos;) {
            const std::string line = pending.substr(0, end);
            pending.erase(0, end + 1);
            if (line == "show") {
                panel.setWorking(true);
                std::cout << "panel " << panel.winId() << std::endl;
            } else if (line == "hide") {
                panel.setWorking(false);
            } else if (line.rfind("stage ", 0) == 0) {
                model.setCaptureStage(line.substr(6));
            }
        }
    });
    return QApplication::exec();
}
