#pragma once
// One chosen language as a capsule: its name and a remove symbol. A click anywhere on the
// capsule removes the language.

#include <QAbstractButton>

#include <functional>

namespace zd::app {

class LanguageChip : public QAbstractButton {
  public:
    explicit LanguageChip(const QString& label, QWidget* parent = nullptr);

    std::function<void()> onRemove;
    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace zd::app
