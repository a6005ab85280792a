#pragma once
// "Output canvas": the canvas picker, and below it the custom size fields or the current
// screen's size in pixels. The fields change the state as typed and are stored on commit.

#include <QWidget>

#include "controls/FillingPopUp.h"
#include "ui/ContentView.h"

class QLabel;
class QLineEdit;

namespace zd::app {

class GeometrySection : public QWidget {
  public:
    explicit GeometrySection(ContentView& view, QWidget* parent = nullptr);
    QLineEdit* widthField() const { return width_; }
    QLineEdit* heightField() const { return height_; }
    QLabel* currentSizeText() const { return currentSize_; }

  private:
    void refresh();
    ContentView& view_;
    FillingPopUp<OutputSize>* picker_;
    QWidget* customRow_;
    QLineEdit* width_;
    QLineEdit* height_;
    QLabel* currentSize_;
    Subscription settings_;
};

}  // namespace zd::app
