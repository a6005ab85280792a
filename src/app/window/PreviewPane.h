#pragma once
// The right side of the window: how many outputs the run will make and a tile for each, every
// tile composed by the core's tile rule with a placeholder in the window's place. Tiles depend
// on their appearance alone, so one picture per appearance is composed, off the UI thread,
// and shared by the tiles of that appearance; a setting changed meanwhile makes the answer
// stale and it is dropped.

#include <QImage>
#include <QScrollArea>

#include <map>
#include <memory>

#include "env/Environment.h"
#include "ui/ContentView.h"

class QLabel;
class QTimer;

namespace zd::app {

class FlowLayout;

class ManifestTile : public QWidget {
  public:
    ManifestTile(const PlanEntry& entry, QSize canvas, QWidget* parent = nullptr);
    void setImage(const QImage& image);
    const QImage& image() const { return image_; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override { return {300, heightForWidth(300)}; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    PlanEntry entry_;
    QSize canvas_;
    QImage image_;
};

class PreviewPane : public QScrollArea {
  public:
    PreviewPane(ContentView& view, Environment& env, QWidget* parent = nullptr);
    ~PreviewPane() override;
    QLabel* countText() const { return count_; }
    const std::vector<ManifestTile*>& tiles() const { return tiles_; }
    // Compositions asked for and not yet answered.
    int pendingRenders() const { return pending_; }

  private:
    void rebuildTiles();
    void scheduleRender();
    void render();
    ContentView& view_;
    Environment& env_;
    QLabel* count_;
    FlowLayout* grid_;
    QTimer* renderSoon_;
    std::vector<ManifestTile*> tiles_;
    std::vector<PlanEntry> shownEntries_;
    QSize shownCanvas_;
    std::map<AppearanceMode, QImage> pictures_;
    std::uint64_t generation_ = 0;
    int pending_ = 0;
    std::shared_ptr<int> alive_ = std::make_shared<int>(0);
    std::vector<Subscription> subscriptions_;
};

}  // namespace zd::app
