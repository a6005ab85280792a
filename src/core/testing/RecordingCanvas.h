#pragma once
// A canvas that paints nothing and records every call with its arguments, for exact-geometry
// tests of composition. Text is measured deterministically (width = 0.5 · size per character,
// cap height 0.7 · size, descender −0.2 · size); a symbol's natural size is its point size
// square, unless the test names it missing.

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "composition/Canvas.h"
#include "env/CanvasFactory.h"

namespace zd {

struct CanvasCall {
    enum class Kind {
        save,
        restore,
        translate,
        setShadow,
        fillRect,
        fillRoundedRect,
        clipToRoundedRect,
        fillEllipse,
        strokeEllipse,
        drawImage,
        drawText,
        drawSymbol,
    };
    Kind kind = Kind::save;
    Rect rect;          // fills, clip, ellipses; the destination of an image draw
    Rect source;        // image draws
    Point point;        // translate's (dx, dy); origin of text and symbols
    Color color;        // fills, ellipses, text, symbols
    double number = 0;  // corner radius, line width, font size, symbol point size
    FontWeight weight = FontWeight::regular;
    CompositeOp op = CompositeOp::sourceOver;
    std::string text;               // the string drawn, or the symbol's name
    Size imageSize;                 // pixel size of the image drawn
    const void* imageId = nullptr;  // Image::storageId() of the image drawn
    std::optional<Shadow> shadow;   // argument of setShadow; for draws, the shadow in force
    Point offset;                   // the translation in force at the call
};

// Everything drawn on one canvas.
struct CanvasRecord {
    int width = 0;
    int height = 0;
    std::vector<CanvasCall> calls;
    bool finished = false;

    std::vector<CanvasCall> callsOf(CanvasCall::Kind kind) const;
};

class RecordingCanvas : public Canvas {
  public:
    RecordingCanvas(int width, int height, std::shared_ptr<CanvasRecord> record = nullptr,
                    std::set<std::string> missingSymbols = {});

    const CanvasRecord& record() const { return *record_; }

    static TextMetrics metricsFor(std::string_view text, double size);

    int width() const override { return record_->width; }
    int height() const override { return record_->height; }
    void save() override;
    void restore() override;
    void translate(double dx, double dy) override;
    void setShadow(const std::optional<Shadow>& shadow) override;
    void fillRect(const Rect& rect, const Color& color) override;
    void fillRoundedRect(const Rect& rect, double cornerRadius, const Color& color) override;
    void clipToRoundedRect(const Rect& rect, double cornerRadius) override;
    void fillEllipse(const Rect& rect, const Color& color) override;
    void strokeEllipse(const Rect& rect, double lineWidth, const Color& color) override;
    void drawImage(const Image& image, const Rect& source, const Rect& destination,
                   CompositeOp op) override;
    TextMetrics measureText(std::string_view text, double size, FontWeight weight) const override;
    void drawText(std::string_view text, const Point& origin, double size, FontWeight weight,
                  const Color& color) override;
    std::optional<Size> symbolSize(std::string_view name, double pointSize) const override;
    bool drawSymbol(std::string_view name, double pointSize, const Point& origin,
                    const Color& color) override;
    Image finish() override;

  private:
    struct State {
        Point offset;
        std::optional<Shadow> shadow;
    };
    // Records the call with the translation and shadow in force.
    void add(CanvasCall call);

    std::shared_ptr<CanvasRecord> record_;
    std::set<std::string> missingSymbols_;
    State state_;
    std::vector<State> saved_;
};

// Makes recording canvases and keeps the record of each, in the order they were made.
class RecordingCanvasFactory : public CanvasFactory {
  public:
    std::unique_ptr<Canvas> makeCanvas(int width, int height) const override;

    // Canvases larger than this many pixels, or with a side of 0 or less, can't be made.
    long long maxPixels = 1LL << 34;
    std::set<std::string> missingSymbols;
    const std::vector<std::shared_ptr<CanvasRecord>>& records() const { return records_; }

  private:
    mutable std::vector<std::shared_ptr<CanvasRecord>> records_;
};

}  // namespace zd
