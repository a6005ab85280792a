#pragma once
// Benchmark instrumentation: a Canvas that forwards to a QtCanvas and books the time of each
// call to a composition stage (background, window with its shadow, menu bar), and an image
// codec that books the background's loading. Not part of the product.

#include <chrono>
#include <map>
#include <memory>
#include <string>

#include "QtCanvas.h"
#include "QtImageCodec.h"
#include "env/CanvasFactory.h"

namespace zd::bench {

using Clock = std::chrono::steady_clock;

// CPU seconds of the whole process (all threads) so far: under a loaded machine it shows the
// work a stage does, where wall time also counts the waits for a core.
double processCpuSeconds();

// Wall and process-CPU seconds per stage name, summed over calls.
struct StageTimes {
    std::map<std::string, double> seconds;
    std::map<std::string, double> cpu;
    void add(const std::string& stage, Clock::duration d, double cpuSeconds = 0) {
        seconds[stage] += std::chrono::duration<double>(d).count();
        cpu[stage] += cpuSeconds;
    }
};

// Books the wall and CPU time between its making and its end to a stage.
class StageTimer {
  public:
    StageTimer(StageTimes& times, std::string stage)
        : times_(times), stage_(std::move(stage)), wall_(Clock::now()), cpu_(processCpuSeconds()) {}
    ~StageTimer() { times_.add(stage_, Clock::now() - wall_, processCpuSeconds() - cpu_); }
    StageTimer(const StageTimer&) = delete;
    StageTimer& operator=(const StageTimer&) = delete;

  private:
    StageTimes& times_;
    std::string stage_;
    Clock::time_point wall_;
    double cpu_;
};

class TimingCanvas final : public Canvas {
  public:
    TimingCanvas(std::unique_ptr<QtCanvas> inner, StageTimes& times);

    int width() const override { return inner_->width(); }
    int height() const override { return inner_->height(); }
    void save() override { inner_->save(); }
    void restore() override;
    void translate(double dx, double dy) override { inner_->translate(dx, dy); }
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
    // Background until the window has been drawn, the bar after it.
    std::string stage() const { return windowDrawn_ ? "bar" : "background cover scale"; }
    template <typename F>
    auto timed(const std::string& stage, F&& f) const;

    std::unique_ptr<QtCanvas> inner_;
    StageTimes& times_;
    bool shadowInForce_ = false;
    bool windowDrawn_ = false;
    bool backgroundDrawn_ = false;
};

class TimingCanvasFactory final : public CanvasFactory {
  public:
    explicit TimingCanvasFactory(StageTimes& times) : times_(times) {}
    std::unique_ptr<Canvas> makeCanvas(int width, int height) const override;

  private:
    StageTimes& times_;
};

class TimingCodec final : public ImageCodec {
  public:
    explicit TimingCodec(StageTimes& times) : times_(&times) {}
    // Books later calls to other stage times (the decoded pictures stay in memory).
    void bookTo(StageTimes& times) { times_ = &times; }
    std::optional<Image> load(const std::string& path) const override;
    std::optional<std::vector<std::uint8_t>> encodePNG(const Image& image) const override;

  private:
    QtImageCodec codec_;
    StageTimes* times_;
};

}  // namespace zd::bench
