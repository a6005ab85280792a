// Writes sample pictures through the real compositor and the Qt canvas, for looking at:
//
//   zd_samples OUTDIR INDIR      INDIR holds window-light.png, window-dark.png, bg.jpg
//                                (made by /work/shared/bench/gen-inputs.sh)

#include <QGuiApplication>

#include <cstdio>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "BenchSetup.h"
#include "QtCanvasFactory.h"
#include "QtImageCodec.h"
#include "composition/Placeholders.h"

using namespace zd;

namespace {

struct Sample {
    std::string name;
    std::function<void(Compositor::Inputs&)> adjust;
    AppearanceMode mode = AppearanceMode::light;
    Size canvas{2880, 1800};
};

}  // namespace

int main(int argc, char** argv) {
    if (qgetenv("QT_QPA_PLATFORM").isEmpty())
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    if (argc != 3) {
        std::fprintf(stderr, "usage: zd_samples OUTDIR INDIR\n");
        return 2;
    }
    const std::filesystem::path out = argv[1];
    const std::string in = argv[2];
    QtImageCodec codec;
    QtCanvasFactory canvases;
    const auto light = codec.load(in + "/window-light.png");
    const auto dark = codec.load(in + "/window-dark.png");
    if (!light || !dark) {
        std::fprintf(stderr, "cannot read the windows in %s\n", in.c_str());
        return 1;
    }
    Placeholders placeholders(canvases);
    const std::string bg = in + "/bg.jpg";
    using I = Compositor::Inputs;
    const std::vector<Sample> samples = {
        {"light-image-2880", [](I&) {}},
        {"dark-image-2880", [](I&) {}, AppearanceMode::dark},
        {"light-image-1280", [](I&) {}, AppearanceMode::light, {1280, 800}},
        {"dark-image-1280", [](I&) {}, AppearanceMode::dark, {1280, 800}},
        {"light-transparent-2880", [](I& i) { i.background.kind = BackgroundKind::transparent; }},
        {"dark-colour-2880",
         [](I& i) {
             i.background.kind = BackgroundKind::color;
             i.background.fillColor = {0.16, 0.2, 0.32, 1};
         },
         AppearanceMode::dark},
        {"light-colour-1280",
         [](I& i) {
             i.background.kind = BackgroundKind::color;
             i.background.fillColor = {0.85, 0.9, 0.97, 1};
         },
         AppearanceMode::light,
         {1280, 800}},
        {"light-bar-hidden-2880", [](I& i) { i.menuBar.visible = false; }},
        {"dark-bar-no-background-2880", [](I& i) { i.menuBar.hasBackground = false; },
         AppearanceMode::dark},
        {"light-japanese-2880",
         [](I& i) {
             i.menuBar.appName = "ゼファードック";
             i.menuBar.menuTitles = {"ファイル", "編集", "表示", "ウインドウ", "ヘルプ"};
             i.menuBar.clockText = "3月9日(月) 14:15";
             i.menuBar.batteryPercent = 42;
         }},
        {"dark-arabic-korean-1280",
         [](I& i) {
             i.menuBar.appName = "زفيردوك";
             i.menuBar.menuTitles = {"ملف", "تحرير", "파일", "편집", "文件"};
             i.menuBar.batteryPercent = 12;
             i.menuBar.customAccessories = {"VPN", "⌘"};
         },
         AppearanceMode::dark,
         {1280, 800}},
        {"light-full-display-2880",
         [&](I& i) {
             i.windowImage = placeholders.fullDisplay(AppearanceMode::light, {2880, 1800});
             i.isFullDisplayCapture = true;
         }},
        {"dark-placeholder-window-1280",
         [&](I& i) {
             i.windowImage = placeholders.window(AppearanceMode::dark, {1600, 1000});
         },
         AppearanceMode::dark,
         {1280, 800}},
        {"light-preview-tile-720", [](I&) {}, AppearanceMode::light, {720, 450}},
    };

    std::filesystem::create_directories(out);
    const Compositor::Platform platform{canvases, codec, bench::benchScreen(), 24.0};
    int failures = 0;
    for (const auto& sample : samples) {
        auto inputs = bench::benchInputs(sample.mode == AppearanceMode::dark ? *dark : *light,
                                         sample.mode, sample.canvas, bg);
        sample.adjust(inputs);
        const Image picture = Compositor::render(inputs, platform);
        const auto path = out / (sample.name + ".png");
        const auto written = Compositor::writePNG(picture, path, codec);
        std::printf("%s %s\n", written ? "wrote" : "FAILED", path.c_str());
        failures += written ? 0 : 1;
    }
    return failures == 0 ? 0 : 1;
}
