#pragma once
// "Backgrounds": one block per appearance that will be shot. A block offers the three kinds
// and below them what the kind needs: a note on transparency, a colour well, or the picture
// (chosen, dropped or cleared).

#include <QWidget>

#include <array>

#include "ui/ContentView.h"

class QLabel;
class QPushButton;

namespace zd::app {

class BackgroundKindTile;

class BackgroundBlock : public QWidget {
  public:
    BackgroundBlock(ContentView& view, AppearanceMode mode, QWidget* parent = nullptr);
    void refresh();
    BackgroundKindTile* tile(BackgroundKind kind) const { return tiles_[caseIndex(kind)]; }
    QPushButton* imageButton() const { return imageButton_; }
    QPushButton* clearButton() const { return clear_; }

  protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    const BackgroundChoice& choice() const;
    ContentView& view_;
    AppearanceMode mode_;
    std::array<BackgroundKindTile*, 3> tiles_{};
    QLabel* transparentNote_;
    QPushButton* well_;
    QWidget* imageRow_;
    QPushButton* imageButton_;
    QPushButton* clear_;
};

class BackgroundsSection : public QWidget {
  public:
    explicit BackgroundsSection(ContentView& view, QWidget* parent = nullptr);
    BackgroundBlock* block(AppearanceMode mode) const { return blocks_[caseIndex(mode)]; }

  private:
    void refresh();
    ContentView& view_;
    std::array<BackgroundBlock*, 2> blocks_{};
    Subscription settings_;
};

}  // namespace zd::app
