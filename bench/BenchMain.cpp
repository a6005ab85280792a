// The composition benchmark (release build). Prints figures; bench/run compares whole
// processes with ImageMagick, libvips and Pillow.
//
//   zd_bench one WINDOW.png BG.jpg OUT.png      compose and write one 2880 × 1800 picture
//   zd_bench stages INDIR [REPS]                per-stage medians: full picture, preview tile
//   zd_bench run32 INDIR OUTDIR                 32 captures saved through saveAll + 32 tiles
//   zd_bench png PICTURE.png                    PNG filters and levels against libpng defaults

#include <QBuffer>
#include <QGuiApplication>
#include <QImage>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "BenchSetup.h"
#include "ImageConversion.h"
#include "PngWriter.h"
#include "TimingCanvas.h"
#include "run/RunOutput.h"

using namespace zd;
using namespace zd::bench;

namespace {

double secondsSince(Clock::time_point t) {
    return std::chrono::duration<double>(Clock::now() - t).count();
}

double median(std::vector<double> v) {
    if (v.empty())
        return 0;
    std::sort(v.begin(), v.end());
    return v.size() % 2 ? v[v.size() / 2] : (v[v.size() / 2 - 1] + v[v.size() / 2]) / 2;
}

void printStages(const char* title, const std::map<std::string, std::vector<double>>& wall,
                 const std::map<std::string, std::vector<double>>& cpu) {
    std::printf("%s (median ms)       wall      cpu\n", title);
    for (const auto& [stage, values] : wall) {
        const auto found = cpu.find(stage);
        std::printf("  %-24s %8.1f %8.1f\n", stage.c_str(), median(values) * 1000,
                    found == cpu.end() ? 0.0 : median(found->second) * 1000);
    }
}

struct Composed {
    Image picture;
    StageTimes times;
};

Composed composeOnce(const Image& window, AppearanceMode mode, Size canvas,
                     const std::string& background, TimingCodec* shared = nullptr) {
    Composed out;
    TimingCanvasFactory canvases(out.times);
    TimingCodec own(out.times);
    TimingCodec& codec = shared != nullptr ? *shared : own;
    codec.bookTo(out.times);
    const Compositor::Platform platform{canvases, codec, benchScreen(), 24.0};
    const StageTimer timer(out.times, "compose total");
    out.picture = Compositor::render(benchInputs(window, mode, canvas, background), platform);
    return out;
}

bool writeFile(const std::string& path, const std::vector<std::uint8_t>& bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(bytes.data()),
              static_cast<std::streamsize>(bytes.size()));
    return static_cast<bool>(out);
}

int runOne(const std::string& windowPath, const std::string& bgPath, const std::string& outPath) {
    StageTimes times;
    std::optional<StageTimer> total(std::in_place, times, "total work");
    QtImageCodec codec;
    std::optional<Image> window;
    // The second core decodes the background while the first reads the capture, as a run can
    // while it captures; composing then finds the picture in the codec's memory.
    StageTimes prefetchTimes;
    TimingCodec shared(prefetchTimes);
    std::thread prefetch([&] {
        const StageTimer timer(prefetchTimes,
                               "background decode (second core, beside window load)");
        shared.load(bgPath);
    });
    {
        const StageTimer timer(times, "window load (input)");
        window = codec.load(windowPath);
    }
    prefetch.join();
    if (!window) {
        std::fprintf(stderr, "cannot read %s\n", windowPath.c_str());
        return 1;
    }
    Composed c = composeOnce(*window, AppearanceMode::light, {2880, 1800}, bgPath, &shared);
    TimingCodec timing(c.times);
    const auto encoded = timing.encodePNG(c.picture);
    if (!encoded)
        return 1;
    {
        const StageTimer timer(c.times, "write");
        if (!writeFile(outPath, *encoded))
            return 1;
    }
    total.reset();
    for (const StageTimes* extra : {&times, &prefetchTimes})
        for (const auto& [stage, s] : extra->seconds) {
            if (stage == "background load")
                continue;  // booked under its own name
            c.times.seconds[stage] += s;
            c.times.cpu[stage] += extra->cpu.at(stage);
        }
    std::printf("one (wall/cpu ms):");
    for (const auto& [stage, s] : c.times.seconds)
        std::printf(" %s %.1f/%.1f;", stage.c_str(), s * 1000, c.times.cpu[stage] * 1000);
    std::printf(" bytes %zu; peak %.0f MiB\n", encoded->size(), peakMemoryMiB());
    return 0;
}

int runStages(const std::string& dir, int reps) {
    QtImageCodec codec;
    const auto window = codec.load(dir + "/window-light.png");
    if (!window)
        return 1;
    const std::string bg = dir + "/bg.jpg";
    // One codec for all rounds, as the application keeps one: the first round decodes the
    // background, later ones find it in memory.
    StageTimes firstLoad;
    TimingCodec shared(firstLoad);
    bool first = true;
    for (const auto& [title, size] : {std::pair{"full picture 2880x1800", Size{2880, 1800}},
                                      std::pair{"preview tile 720x450", Size{720, 450}}}) {
        std::map<std::string, std::vector<double>> wall, cpu;
        std::size_t bytes = 0;
        for (int i = 0; i < reps; ++i) {
            StageTimes totals;
            std::optional<StageTimer> total(std::in_place, totals, "total work");
            Composed c = composeOnce(*window, AppearanceMode::light, size, bg, &shared);
            if (size.width > 1000) {
                const auto png = shared.encodePNG(c.picture);
                bytes = png ? png->size() : 0;
            }
            total.reset();
            for (const auto& [stage, s] : c.times.seconds) {
                if (stage == "background load" && first) {
                    std::printf(
                        "first background decode, not yet in memory: %.1f ms wall, "
                        "%.1f ms cpu\n",
                        s * 1000, c.times.cpu[stage] * 1000);
                    first = false;
                    continue;
                }
                wall[stage].push_back(s);
                cpu[stage].push_back(c.times.cpu[stage]);
            }
            wall["total work"].push_back(totals.seconds["total work"]);
            cpu["total work"].push_back(totals.cpu["total work"]);
        }
        printStages(title, wall, cpu);
        if (bytes)
            std::printf("  PNG bytes %zu\n", bytes);
    }
    std::printf("peak memory %.0f MiB\n", peakMemoryMiB());
    return 0;
}

int runRun32(const std::string& dir, const std::string& outDir) {
    const auto started = Clock::now();
    QtImageCodec codec;
    const auto light = codec.load(dir + "/window-light.png");
    const auto dark = codec.load(dir + "/window-dark.png");
    if (!light || !dark)
        return 1;
    // 32 captures held in memory until saving, each with its own pixels, as a run holds them.
    static const char* const languages[] = {"en",    "de", "fr", "es", "it", "ja", "ko", "zh-Hans",
                                            "pt-BR", "nl", "sv", "da", "fi", "pl", "tr", "ar"};
    std::vector<CapturedShot> shots;
    for (const char* code : languages)
        for (const auto mode : {AppearanceMode::light, AppearanceMode::dark}) {
            CapturedShot shot;
            shot.id = makeUUID();
            shot.languageCode = code;
            shot.mode = mode;
            shot.image = mode == AppearanceMode::light ? *light : *dark;
            shot.image.mutablePixels();  // detach: a capture of its own
            shot.image.setPixel(0, 0, static_cast<std::uint32_t>(shots.size()));
            shots.push_back(std::move(shot));
        }
    const double loadSeconds = secondsSince(started);

    StageTimes times;
    TimingCanvasFactory canvases(times);
    TimingCodec timingCodec(times);
    const Compositor::Platform platform{canvases, timingCodec, benchScreen(), 24.0};
    const std::string bg = dir + "/bg.jpg";

    const auto tilesStarted = Clock::now();
    std::size_t tilePixels = 0;
    for (const auto& shot : shots) {
        const Image tile =
            Compositor::render(benchInputs(shot.image, shot.mode, {720, 450}, bg), platform);
        tilePixels +=
            static_cast<std::size_t>(tile.width()) * static_cast<std::size_t>(tile.height());
    }
    const double tileSeconds = secondsSince(tilesStarted);
    const StageTimes tileTimes = times;
    times = {};

    std::filesystem::remove_all(outDir);
    const auto saveStarted = Clock::now();
    const ShotComposer compose = [&](const CapturedShot& shot) {
        return Compositor::render(benchInputs(shot.image, shot.mode, {2880, 1800}, bg), platform);
    };
    const auto saved = saveAll(shots, outDir, "", "", compose, timingCodec);
    const double saveSeconds = secondsSince(saveStarted);
    if (!saved) {
        std::fprintf(stderr, "save failed: %s\n", saved.error().localizedDescription.c_str());
        return 1;
    }
    std::uintmax_t bytes = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(outDir))
        if (entry.is_regular_file())
            bytes += entry.file_size();

    std::printf(
        "run32: captures %.2f s; 32 preview tiles %.2f s (%.1f ms each); saveAll of 32 "
        "%.2f s (%.0f ms each); total %.2f s\n",
        loadSeconds, tileSeconds, tileSeconds / 32 * 1000, saveSeconds, saveSeconds / 32 * 1000,
        secondsSince(started));
    std::printf("  saveAll stages per picture (mean ms):");
    for (const auto& [stage, s] : times.seconds)
        std::printf(" %s %.1f;", stage.c_str(), s / 32 * 1000);
    std::printf("\n  tile stages per tile (mean ms):");
    for (const auto& [stage, s] : tileTimes.seconds)
        std::printf(" %s %.1f;", stage.c_str(), s / 32 * 1000);
    std::printf("\n  bytes written %ju; peak memory %.0f MiB; tile pixels %zu\n", bytes,
                peakMemoryMiB(), tilePixels);

    return 0;
}

int runPng(const std::string& path) {
    QtImageCodec codec;
    const auto image = codec.load(path);
    if (!image)
        return 1;
    // libpng's defaults, through Qt's PNG writer (zlib level 6, adaptive filters), with the
    // channels ours writes: RGB for an opaque picture, RGBA otherwise.
    const auto pixels = image->pixels();
    const bool opaque = std::all_of(pixels.begin(), pixels.end(),
                                    [](std::uint32_t p) { return Image::alphaOf(p) == 255; });
    const QImage q =
        toQImage(*image).convertToFormat(opaque ? QImage::Format_RGB32 : QImage::Format_ARGB32);
    QByteArray reference;
    auto started = Clock::now();
    {
        QBuffer buffer(&reference);
        buffer.open(QIODevice::WriteOnly);
        q.save(&buffer, "PNG");
    }
    const double referenceMs = secondsSince(started) * 1000;
    std::printf("libpng defaults: %lld bytes, %.0f ms\n", static_cast<long long>(reference.size()),
                referenceMs);
    const std::pair<const char*, PngWriter::Filter> filters[] = {
        {"none", PngWriter::Filter::none},
        {"sub", PngWriter::Filter::sub},
        {"up", PngWriter::Filter::up},
        {"avg", PngWriter::Filter::average},
        {"paeth", PngWriter::Filter::paeth}};
    for (const auto& [name, filter] : filters)
        for (int level : {1, 2, 3, 4, 6}) {
            std::vector<double> times;
            std::size_t size = 0;
            PngWriter::Timings t;
            for (int i = 0; i < 3; ++i) {
                started = Clock::now();
                size = PngWriter::encode(*image, {filter, level, 2}, &t)->size();
                times.push_back(secondsSince(started));
            }
            std::printf("  %-5s level %d: %9zu bytes (%.3fx) %6.1f ms (rows %.1f, deflate %.1f)\n",
                        name, level, size,
                        static_cast<double>(size) / static_cast<double>(reference.size()),
                        median(times) * 1000, std::chrono::duration<double>(t.rows).count() * 1000,
                        std::chrono::duration<double>(t.deflate).count() * 1000);
        }
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM",
            qgetenv("QT_QPA_PLATFORM").isEmpty() ? "offscreen" : qgetenv("QT_QPA_PLATFORM"));
    QGuiApplication app(argc, argv);
    const std::vector<std::string> args(argv + 1, argv + argc);
    if (args.size() == 4 && args[0] == "one")
        return runOne(args[1], args[2], args[3]);
    if (args.size() >= 2 && args[0] == "stages")
        return runStages(args[1], args.size() > 2 ? std::stoi(args[2]) : 7);
    if (args.size() == 3 && args[0] == "run32")
        return runRun32(args[1], args[2]);
    if (args.size() == 2 && args[0] == "png")
        return runPng(args[1]);
    std::fprintf(stderr,
                 "usage: zd_bench one WINDOW BG OUT | stages INDIR [REPS] | run32 INDIR OUTDIR | "
                 "png PICTURE\n");
    return 2;
}
