#include "controls/Tile.h"

#include <QEvent>
#include <QPainter>
#include <QVBoxLayout>

#include "controls/AppPalette.h"

namespace zd::app {

Tile::Tile(QWidget* parent, bool compact)
    : SelectableTile(Look{8, 0.18, 0.08, 1.5, 1.0}, parent),
      label_(new QLabel(this)),
      detail_(new QLabel(this)) {
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);  // the detail wraps
    setSizePolicy(policy);
    auto* column = new QVBoxLayout(this);
    column->setSpacing(2);
    if (compact)
        column->setContentsMargins(10, 6, 10, 6);
    else
        column->setContentsMargins(12, 10, 12, 10);
    QFont font = label_->font();
    font.setPixelSize(compact ? 11 : 12);
    font.setWeight(QFont::DemiBold);
    label_->setFont(font);
    font.setPixelSize(10);
    font.setWeight(QFont::Normal);
    detail_->setFont(font);
    detail_->setWordWrap(true);
    detail_->hide();
    column->addStretch();  // the text centred in a tile taller than it needs
    for (QLabel* text : {label_, detail_}) {
        text->setAttribute(Qt::WA_TransparentForMouseEvents);
        column->addWidget(text);
    }
    column->addStretch();
    changeEvent(nullptr);
}

void Tile::setLabel(const QString& label) {
    label_->setText(label);
}

void Tile::setDetail(const std::optional<QString>& detail) {
    detail_->setText(detail.value_or(QString()));
    detail_->setVisible(detail.has_value());
}

QSize Tile::sizeHint() const {
    return layout()->sizeHint();
}

int Tile::heightForWidth(int width) const {
    return layout()->hasHeightForWidth() ? layout()->totalHeightForWidth(width)
                                         : layout()->sizeHint().height();
}

void Tile::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    paintTile(painter);
}

void Tile::changeEvent(QEvent* event) {
    if (event)
        SelectableTile::changeEvent(event);
    if (event && event->type() != QEvent::PaletteChange)
        return;
    QPalette p = detail_->palette();
    p.setColor(QPalette::WindowText, secondaryColor(palette()));
    detail_->setPalette(p);
}

}  // namespace zd::app
