// The end of a run, measured: 32 captures of 2880 × 1800 (16 languages × Light and Dark) taken
// at the run's pace, then saved. `hold` keeps every capture until the end and composes, encodes
// and writes them all there; `pipelined` hands each capture to the run's ShotPipeline on Qt's
// worker pool and writes only the bytes at the end. Prints the time from the last capture to
// the last file written and the process's peak memory: run each way in a process of its own.
//
//   zd_bench_pipeline INDIR OUTDIR hold|pipelined [GAP_SECONDS]    default gap 0.6 s (the
//                                                                  appearance settle wait)

#include <QGuiApplication>
#include <QImage>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "BenchSetup.h"
#include "ImageConversion.h"
#include "QtCanvasFactory.h"
#include "QtImageCodec.h"
#include "common/QtClock.h"
#include "run/RunOutput.h"
#include "run/ShotPipeline.h"
#include "run/Task.h"

using namespace zd;
using namespace zd::bench;
using SteadyClock = std::chrono::steady_clock;

namespace {

struct Figures {
    SteadyClock::time_point lastCapture;
    SteadyClock::time_point encoded;  // every picture encoded, nothing written yet
    SteadyClock::time_point saved;
    bool ok = false;
};

// A capture of its own: the picture's pixels copied, as the window server hands them over.
CapturedShot capture(const Image& window, const char* code, AppearanceMode mode, int index) {
    CapturedShot shot{makeUUID(), code, code, mode, window};
    shot.image.mutablePixels();
    shot.image.setPixel(0, 0, static_cast<std::uint32_t>(index));
    return shot;
}

Task<void> walk(Clock& clock, WorkerPool& workers, bool pipelined, Nanos gap, const Image& light,
                const Image& dark, const ShotComposer& compose, const ImageCodec& codec,
                const std::filesystem::path& out, Figures& figures) {
    static const char* const languages[] = {"en",    "de", "fr", "es", "it", "ja", "ko", "zh-Hans",
                                            "pt-BR", "nl", "sv", "da", "fi", "pl", "tr", "ar"};
    ShotPipeline pipeline(workers, [&compose, &codec](CapturedShot shot) {
        return encodeShot(std::move(shot), compose, codec);
    });
    std::vector<CapturedShot> held;
    int index = 0;
    for (const char* code : languages) {
        if (pipelined)
            co_await pipeline.roomFor(2);  // the run's own bound before a language's captures
        for (const auto mode : {AppearanceMode::light, AppearanceMode::dark}) {
            (void)co_await sleepFor(clock, gap);
            CapturedShot shot =
                capture(mode == AppearanceMode::light ? light : dark, code, mode, index++);
            figures.lastCapture = SteadyClock::now();
            if (pipelined)
                pipeline.add(std::move(shot));
            else
                held.push_back(std::move(shot));
        }
    }
    if (pipelined) {
        co_await pipeline.finished();
        figures.encoded = SteadyClock::now();
        figures.ok = static_cast<bool>(writeEncoded(pipeline.take(), out, ""));
    } else {
        figures.encoded = SteadyClock::now();
        figures.ok = static_cast<bool>(saveAll(held, out, "", "", compose, codec));
    }
    figures.saved = SteadyClock::now();
    QCoreApplication::quit();
}

Image scaledWindow(const ImageCodec& codec, const std::string& path) {
    const auto loaded = codec.load(path);
    if (!loaded)
        return {};
    Image window = fromQImage(
        toQImage(*loaded).scaled(2880, 1800, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    window.setPixelsPerPoint(2);
    return window;
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM",
            qgetenv("QT_QPA_PLATFORM").isEmpty() ? "offscreen" : qgetenv("QT_QPA_PLATFORM"));
    QGuiApplication app(argc, argv);
    const std::vector<std::string> args(argv + 1, argv + argc);
    if (args.size() < 3 || (args[2] != "hold" && args[2] != "pipelined")) {
        std::fprintf(stderr, "usage: zd_bench_pipeline INDIR OUTDIR hold|pipelined [GAP]\n");
        return 2;
    }
    const bool pipelined = args[2] == "pipelined";
    const double gapSeconds = args.size() > 3 ? std::stod(args[3]) : 0.6;

    QtImageCodec codec;
    QtCanvasFactory canvases;
    const Image light = scaledWindow(codec, args[0] + "/window-light.png");
    const Image dark = scaledWindow(codec, args[0] + "/window-dark.png");
    if (light.isNull() || dark.isNull())
        return 1;
    const Compositor::Platform platform{canvases, codec, benchScreen(), 24.0};
    const std::string bg = args[0] + "/bg.jpg";
    const ShotComposer compose = [&](const CapturedShot& shot) {
        return Compositor::render(benchInputs(shot.image, shot.mode, {2880, 1800}, bg), platform);
    };

    const std::filesystem::path out = args[1];
    std::filesystem::remove_all(out);
    QtClock clock;
    QtWorkerPool workers(clock);
    Figures figures;
    const auto gap = std::chrono::duration_cast<Nanos>(std::chrono::duration<double>(gapSeconds));
    const auto started = SteadyClock::now();
    TaskHandle run =
        spawn(walk(clock, workers, pipelined, gap, light, dark, compose, codec, out, figures));
    if (!run.isDone())
        QGuiApplication::exec();
    if (!figures.ok) {
        std::fprintf(stderr, "save failed\n");
        return 1;
    }
    std::uintmax_t bytes = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(out))
        if (entry.is_regular_file())
            bytes += entry.file_size();
    const auto seconds = [](SteadyClock::duration d) {
        return std::chrono::duration<double>(d).count();
    };
    std::printf(
        "%-9s 32 captures of 2880x1800, one every %.2f s: last capture to saved %.2f s (waiting "
        "for the encoder %.2f s, saving %.2f s); whole run %.2f s; peak memory %.0f MiB; bytes "
        "written %ju\n",
        args[2].c_str(), gapSeconds, seconds(figures.saved - figures.lastCapture),
        seconds(figures.encoded - figures.lastCapture), seconds(figures.saved - figures.encoded),
        seconds(figures.saved - started), peakMemoryMiB(), bytes);
    return 0;
}
