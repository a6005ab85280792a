// zd_make_backgrounds: paints the two first-run background pictures of the resource bundle,
// "Light.jpg" (a pastel dawn over soft dunes) and "Dark.jpg" (an aurora over night dunes).
// The artwork is drawn from code at build time, so the repository holds no large pictures and
// every build gets identical files: all randomness comes from a fixed seed.
//
// Usage: zd_make_backgrounds <output-folder> [width height]

#include <QColor>
#include <QCoreApplication>
#include <QDir>
#include <QImage>
#include <QImageWriter>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <string>

namespace {

constexpr double pi = 3.14159265358979323846;

// A small deterministic generator: the same pictures on every machine.
class Random {
  public:
    explicit Random(std::uint64_t seed) : state_(seed) {}
    double next() {  // 0 … 1
        state_ = state_ * 6364136223846793005ULL + 1442695040888963407ULL;
        return static_cast<double>(state_ >> 11) / 9007199254740992.0;
    }
    double between(double low, double high) { return low + (high - low) * next(); }

  private:
    std::uint64_t state_;
};

struct Wave {
    double amplitude, frequency, phase;
};

// The upper edge of a dune: a few sine waves added, in picture coordinates.
QPainterPath duneShape(double width, double height, double baseline, const Wave (&waves)[3]) {
    QPainterPath path;
    path.moveTo(0, height);
    const int steps = 240;
    for (int i = 0; i <= steps; ++i) {
        double x = width * i / steps;
        double t = x / width;
        double y = baseline;
        for (const auto& wave : waves)
            y += wave.amplitude * std::sin(2 * pi * wave.frequency * t + wave.phase);
        path.lineTo(x, y);
    }
    path.lineTo(width, height);
    path.closeSubpath();
    return path;
}

void softGlow(QPainter& painter, QPointF centre, double radius, QColor colour) {
    QRadialGradient glow(centre, radius);
    glow.setColorAt(0.0, colour);
    QColor mid = colour;
    mid.setAlphaF(colour.alphaF() * 0.35);
    glow.setColorAt(0.45, mid);
    glow.setColorAt(1.0, QColor(colour.red(), colour.green(), colour.blue(), 0));
    painter.setPen(Qt::NoPen);
    painter.setBrush(glow);
    painter.drawEllipse(centre, radius, radius);
}

// A layer of dunes from back to front, each a little darker (or warmer) than the one behind.
void paintDunes(QPainter& painter, double w, double h, Random& random, const QColor (&tops)[4],
                const QColor (&bottoms)[4], QColor rim) {
    for (int layer = 0; layer < 4; ++layer) {
        double baseline = h * (0.60 + 0.085 * layer);
        double scale = h * (0.045 - 0.006 * layer);
        Wave waves[3] = {{scale, random.between(0.6, 1.1), random.between(0, 2 * pi)},
                         {scale * 0.55, random.between(1.6, 2.4), random.between(0, 2 * pi)},
                         {scale * 0.18, random.between(3.5, 5.0), random.between(0, 2 * pi)}};
        QPainterPath dune = duneShape(w, h, baseline, waves);
        QLinearGradient fill(0, baseline - scale * 1.8, 0, h);
        fill.setColorAt(0, tops[layer]);
        fill.setColorAt(1, bottoms[layer]);
        painter.setBrush(fill);
        painter.setPen(QPen(rim, h * 0.0022));
        painter.drawPath(dune);
    }
}

// A faint grain over everything, so the long gradients don't band once compressed.
void addGrain(QImage& image, double strength, std::uint64_t seed) {
    Random random(seed);
    for (int y = 0; y < image.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            int delta = static_cast<int>(std::lround((random.next() - 0.5) * 2 * strength));
            QRgb p = line[x];
            auto clamp = [](int v) { return v < 0 ? 0 : (v > 255 ? 255 : v); };
            line[x] =
                qRgb(clamp(qRed(p) + delta), clamp(qGreen(p) + delta), clamp(qBlue(p) + delta));
        }
    }
}

QImage paintLight(int width, int height) {
    QImage image(width, height, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const double w = width, h = height;
    Random random(0x5EED1A);

    QLinearGradient sky(0, 0, 0, h);
    sky.setColorAt(0.00, QColor(0xB7, 0xD3, 0xF2));
    sky.setColorAt(0.45, QColor(0xEE, 0xDD, 0xF3));
    sky.setColorAt(0.80, QColor(0xFF, 0xE4, 0xD6));
    sky.setColorAt(1.00, QColor(0xFF, 0xEE, 0xDD));
    painter.fillRect(image.rect(), sky);

    softGlow(painter, {w * 0.70, h * 0.42}, w * 0.42, QColor(255, 250, 240, 210));
    softGlow(painter, {w * 0.70, h * 0.42}, w * 0.07, QColor(255, 255, 250, 235));
    softGlow(painter, {w * 0.16, h * 0.22}, w * 0.30, QColor(0xC9, 0xF2, 0xE8, 110));
    softGlow(painter, {w * 0.40, h * 0.08}, w * 0.26, QColor(0xD9, 0xC8, 0xFF, 90));
    softGlow(painter, {w * 0.95, h * 0.10}, w * 0.22, QColor(0xFF, 0xD1, 0xE6, 90));

    // Long thin clouds.
    for (int i = 0; i < 7; ++i) {
        double cx = random.between(0.05, 0.95) * w;
        double cy = random.between(0.12, 0.45) * h;
        double rx = random.between(0.10, 0.22) * w;
        QRadialGradient cloud({cx, cy}, rx);
        cloud.setColorAt(0, QColor(255, 255, 255, 80));
        cloud.setColorAt(1, QColor(255, 255, 255, 0));
        painter.setPen(Qt::NoPen);
        painter.setBrush(cloud);
        painter.save();
        painter.translate(cx, cy);
        painter.scale(1.0, 0.16);
        painter.translate(-cx, -cy);
        painter.drawEllipse(QPointF(cx, cy), rx, rx);
        painter.restore();
    }

    const QColor tops[4] = {QColor(0xD8, 0xCB, 0xEE, 235), QColor(0xF3, 0xC6, 0xD6, 240),
                            QColor(0xFB, 0xC8, 0xB0, 245), QColor(0xF6, 0xAE, 0x96)};
    const QColor bottoms[4] = {QColor(0xEB, 0xDD, 0xF2, 235), QColor(0xF8, 0xDA, 0xE0, 240),
                               QColor(0xFD, 0xDC, 0xC6, 245), QColor(0xFA, 0xCB, 0xB4)};
    paintDunes(painter, w, h, random, tops, bottoms, QColor(255, 255, 255, 90));
    painter.end();
    addGrain(image, 1.6, 0x11);
    return image;
}

QImage paintDark(int width, int height) {
    QImage image(width, height, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const double w = width, h = height;
    Random random(0xDA4C);

    QLinearGradient sky(0, 0, 0, h);
    sky.setColorAt(0.00, QColor(0x05, 0x08, 0x16));
    sky.setColorAt(0.50, QColor(0x0E, 0x16, 0x36));
    sky.setColorAt(1.00, QColor(0x1A, 0x12, 0x33));
    painter.fillRect(image.rect(), sky);

    // Stars, denser and brighter towards the top.
    painter.setPen(Qt::NoPen);
    for (int i = 0; i < 900; ++i) {
        double x = random.next() * w;
        double y = std::pow(random.next(), 1.6) * h * 0.7;
        double r = random.between(0.4, 1.6) * h / 1800.0 * 1.6;
        int alpha = static_cast<int>(random.between(60, 220) * (1.0 - y / (h * 0.8)));
        painter.setBrush(QColor(235, 240, 255, alpha < 0 ? 0 : alpha));
        painter.drawEllipse(QPointF(x, y), r, r);
        if (i % 60 == 0)
            softGlow(painter, {x, y}, r * 9, QColor(200, 215, 255, 70));
    }

    // Aurora: curtains of light, each a vertical fade along a slow wave.
    const QColor curtains[3] = {QColor(0x2E, 0xE6, 0xC5), QColor(0x4F, 0x9D, 0xFF),
                                QColor(0x8C, 0x5C, 0xFF)};
    for (int band = 0; band < 3; ++band) {
        double centre = h * (0.22 + 0.09 * band);
        double amplitude = h * random.between(0.05, 0.09);
        double frequency = random.between(0.7, 1.3);
        double phase = random.between(0, 2 * pi);
        // One pixel column at a time, edge to edge, so neighbouring columns never overlap.
        painter.setRenderHint(QPainter::Antialiasing, false);
        for (int column = 0; column < width; ++column) {
            double x = column;
            double t = x / w;
            double y = centre + amplitude * std::sin(2 * pi * frequency * t + phase);
            double strength = 0.5 + 0.5 * std::sin(2 * pi * (2.3 * t) + phase * 1.7);
            double tall = h * (0.10 + 0.12 * strength);
            QColor colour = curtains[band];
            QLinearGradient curtain(0, y - tall, 0, y + h * 0.02);
            colour.setAlpha(0);
            curtain.setColorAt(0, colour);
            colour.setAlpha(static_cast<int>(10 + 26 * strength));
            curtain.setColorAt(0.8, colour);
            colour.setAlpha(0);
            curtain.setColorAt(1, colour);
            painter.fillRect(QRectF(x, y - tall, 1, tall + h * 0.02), curtain);
        }
        painter.setRenderHint(QPainter::Antialiasing, true);
    }
    softGlow(painter, {w * 0.5, h * 0.62}, w * 0.55, QColor(0x6A, 0x4C, 0xD8, 60));

    const QColor tops[4] = {QColor(0x1C, 0x1F, 0x4A, 240), QColor(0x15, 0x17, 0x3A, 245),
                            QColor(0x0E, 0x10, 0x2A, 250), QColor(0x08, 0x09, 0x1A)};
    const QColor bottoms[4] = {QColor(0x12, 0x13, 0x33, 240), QColor(0x0D, 0x0E, 0x27, 245),
                               QColor(0x08, 0x09, 0x1C, 250), QColor(0x04, 0x05, 0x10)};
    paintDunes(painter, w, h, random, tops, bottoms, QColor(0x5E, 0xE6, 0xD0, 55));
    painter.end();
    addGrain(image, 1.2, 0x22);
    return image;
}

bool save(const QImage& image, const QString& path) {
    QImageWriter writer(path, "jpg");
    writer.setQuality(92);
    writer.setOptimizedWrite(true);
    if (writer.write(image))
        return true;
    std::fprintf(stderr, "zd_make_backgrounds: cannot write %s: %s\n", qPrintable(path),
                 qPrintable(writer.errorString()));
    return false;
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    if (argc != 2 && argc != 4) {
        std::fprintf(stderr, "usage: zd_make_backgrounds <output-folder> [width height]\n");
        return 2;
    }
    int width = 2880, height = 1800;
    if (argc == 4) {
        width = std::atoi(argv[2]);
        height = std::atoi(argv[3]);
        if (width < 16 || height < 16 || width > 16384 || height > 16384) {
            std::fprintf(stderr, "zd_make_backgrounds: size must be 16 to 16384 pixels a side\n");
            return 2;
        }
    }
    QDir folder(QString::fromLocal8Bit(argv[1]));
    if (!folder.mkpath(".")) {
        std::fprintf(stderr, "zd_make_backgrounds: cannot create %s\n", argv[1]);
        return 1;
    }
    bool ok = save(paintLight(width, height), folder.filePath("Light.jpg"));
    ok = save(paintDark(width, height), folder.filePath("Dark.jpg")) && ok;
    return ok ? 0 : 1;
}
