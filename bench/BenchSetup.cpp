#include "BenchSetup.h"

#include <sys/resource.h>

namespace zd::bench {

ScreenInfo benchScreen() {
    ScreenInfo screen;
    screen.frame = {0, 0, 1440, 900};
    screen.visibleFrame = {0, 0, 1440, 876};
    screen.backingScaleFactor = 2.0;
    return screen;
}

Compositor::Inputs benchInputs(const Image& window, AppearanceMode mode, Size canvas,
                               const std::string& backgroundPath) {
    Compositor::Inputs inputs;
    inputs.windowImage = window;
    inputs.canvas = canvas;
    inputs.background.kind = BackgroundKind::image;
    inputs.background.url = backgroundPath;
    inputs.background.fillColor = Color::white(0.5);
    inputs.mode = mode;
    inputs.menuBar.appName = "Zephyrdock Sample";
    inputs.menuBar.clockText = "Mon 9 Mar 14:15";
    inputs.applyShadow = true;
    return inputs;
}

double peakMemoryMiB() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024.0;
}

}  // namespace zd::bench
