#include "window/BackgroundsSection.h"

#include <QColorDialog>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QMimeData>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>

#include "controls/BackgroundKindTile.h"
#include "ui/WindowTexts.h"
#include "window/SectionStyle.h"

namespace zd::app {

namespace {

QColor toQColor(const Color& color) {
    return QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
                            static_cast<float>(color.blue), static_cast<float>(color.alpha));
}

}  // namespace

BackgroundBlock::BackgroundBlock(ContentView& view, AppearanceMode mode, QWidget* parent)
    : QWidget(parent),
      view_(view),
      mode_(mode),
      transparentNote_(
          secondaryText("Saved PNGs will keep alpha \u2014 handy for promo composites.", 11)),
      well_(new QPushButton(this)),
      imageRow_(new QWidget(this)),
      imageButton_(new QPushButton(imageRow_)),
      clear_(new QPushButton("Clear", imageRow_)) {
    setAcceptDrops(true);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(6);
    auto* label = new QLabel(qs(title(mode)), this);
    label->setFont(uiFont(12, true));
    column->addWidget(label);
    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    for (BackgroundKind kind : allCases<BackgroundKind>()) {
        auto* tile = new BackgroundKindTile(kind, this);
        tile->setToolTip(qs(WindowTexts::backgroundKindWord(kind)));
        tile->onTap = [this, kind] { view_.setBackgroundKind(mode_, kind); };
        tiles_[caseIndex(kind)] = tile;
        row->addWidget(tile);
    }
    row->addStretch(1);
    column->addLayout(row);
    transparentNote_->setWordWrap(true);
    column->addWidget(transparentNote_);
    well_->setAccessibleName("Fill color");
    well_->setFixedSize(60, 24);
    connect(well_, &QPushButton::clicked, this, [this] {
        const QColor chosen =
            QColorDialog::getColor(toQColor(choice().fillColor), this, "Fill color");
        if (chosen.isValid())
            view_.setBackgroundFillColor(
                mode_, Color{chosen.redF(), chosen.greenF(), chosen.blueF(), chosen.alphaF()});
    });
    column->addWidget(well_);
    auto* imageLayout = new QHBoxLayout(imageRow_);
    imageLayout->setContentsMargins(8, 8, 8, 8);
    imageLayout->setSpacing(8);
    imageRow_->setObjectName("imageDrop");
    imageRow_->setStyleSheet(
        "#imageDrop { border-radius: 6px; background: rgba(128,128,128,20); }");
    imageLayout->addWidget(imageButton_);
    clear_->setFlat(true);
    imageLayout->addWidget(clear_);
    imageLayout->addStretch(1);
    connect(imageButton_, &QPushButton::clicked, this,
            [this] { view_.chooseBackgroundImage(mode_); });
    connect(clear_, &QPushButton::clicked, this,
            [this] { view_.setBackgroundURL(mode_, std::nullopt); });
    column->addWidget(imageRow_);
    refresh();
}

const BackgroundChoice& BackgroundBlock::choice() const {
    return mode_ == AppearanceMode::light ? view_.lightBackground : view_.darkBackground;
}

void BackgroundBlock::refresh() {
    const BackgroundChoice& current = choice();
    for (BackgroundKind kind : allCases<BackgroundKind>()) {
        tile(kind)->setSelected(kind == current.kind);
        tile(kind)->setColor(toQColor(current.fillColor));
        tile(kind)->setImagePath(current.url ? qs(*current.url) : QString());
    }
    transparentNote_->setVisible(current.kind == BackgroundKind::transparent);
    well_->setVisible(current.kind == BackgroundKind::color);
    well_->setStyleSheet(
        QString("QPushButton { background: %1; border: 1px solid rgba(128,128,128,90);"
                " border-radius: 4px; }")
            .arg(toQColor(current.fillColor).name(QColor::HexArgb)));
    imageRow_->setVisible(current.kind == BackgroundKind::image);
    imageButton_->setText(qs(WindowTexts::imageButtonTitle(current.url)));
    clear_->setVisible(current.url.has_value());
}

void BackgroundBlock::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void BackgroundBlock::dropEvent(QDropEvent* event) {
    std::vector<std::string> urls;
    for (const QUrl& url : event->mimeData()->urls())
        urls.push_back(url.toString().toStdString());
    if (view_.handleDrop(mode_, urls))
        event->acceptProposedAction();
}

BackgroundsSection::BackgroundsSection(ContentView& view, QWidget* parent)
    : QWidget(parent), view_(view) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(sectionLabel("Backgrounds"));
    for (AppearanceMode mode : allCases<AppearanceMode>()) {
        blocks_[caseIndex(mode)] = new BackgroundBlock(view, mode, this);
        column->addWidget(blocks_[caseIndex(mode)]);
    }
    settings_ = view_.subscribe(ViewChange::settings, [this] { refresh(); });
    refresh();
}

void BackgroundsSection::refresh() {
    for (AppearanceMode mode : allCases<AppearanceMode>()) {
        block(mode)->setVisible(view_.enabledAppearances.contains(mode));
        block(mode)->refresh();
    }
}

}  // namespace zd::app
