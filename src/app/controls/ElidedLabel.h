#pragma once
// One line of text that ends in "…" when it doesn't fit its width, instead of widening its
// window or wrapping.

#include <QString>
#include <QWidget>

namespace zd::app {

class ElidedLabel : public QWidget {
  public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    void setText(const QString& text);
    const QString& text() const { return text_; }
    // The text as it is drawn at the present width.
    QString shownText() const;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QString text_;
};

}  // namespace zd::app
