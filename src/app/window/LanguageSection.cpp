#include "window/LanguageSection.h"

#include <QGraphicsOpacityEffect>
#include <QHBoxLayout>
#include <QMenu>
#include <QToolButton>
#include <QVBoxLayout>

#include "controls/LanguageChip.h"
#include "ui/WindowTexts.h"
#include "window/FlowLayout.h"
#include "window/SectionStyle.h"

namespace zd::app {

LanguageSection::LanguageSection(ContentView& view, QWidget* parent)
    : QWidget(parent),
      view_(view),
      add_(new QToolButton(this)),
      menu_(new QMenu(this)),
      helper_(helperLine({})),
      chips_(new QWidget(this)),
      flow_(new FlowLayout(110, 6, chips_)),
      chipsHelper_(helperLine("Each capture relaunches the target with -AppleLanguages "
                              "'(<code>)' and waits for its window.")) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    auto* header = new QHBoxLayout;
    header->addWidget(sectionLabel("Languages"));
    header->addStretch(1);
    add_->setText("Add");
    add_->setIcon(symbolIcon("plus.circle", 14, palette().color(QPalette::ButtonText)));
    add_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    add_->setPopupMode(QToolButton::InstantPopup);
    add_->setAutoRaise(true);
    add_->setMenu(menu_);
    connect(menu_, &QMenu::aboutToShow, this, [this] { fillMenu(); });
    header->addWidget(add_);
    column->addLayout(header);
    column->addWidget(helper_);
    column->addWidget(chips_);
    column->addWidget(chipsHelper_);
    setGraphicsEffect(new QGraphicsOpacityEffect(this));
    settings_ = view_.subscribe(ViewChange::settings, [this] { refresh(); });
    fillMenu();
    refresh();
}

void LanguageSection::fillMenu() {
    menu_->clear();
    const auto addable = WindowTexts::addableLanguages(view_.languages);
    if (addable.empty())
        menu_->addAction(WindowTexts::allLanguagesAdded)->setEnabled(false);
    for (const LanguageSelection& language : addable)
        menu_->addAction(qs(WindowTexts::languageMenuItem(language)), this,
                         [this, language] { view_.addLanguage(language); });
}

void LanguageSection::refresh() {
    const bool all = view_.captureScope == CaptureScope::allWindows;
    static_cast<QGraphicsOpacityEffect*>(graphicsEffect())->setOpacity(all ? 0.6 : 1.0);
    add_->setEnabled(!all);
    if (all)
        helper_->setText(
            "Language switching only applies in single-window mode \u2014 each capture "
            "relaunches the target with -AppleLanguages. Multiple-windows mode composites "
            "whatever's already on screen, so per-app language can't be controlled here.");
    else
        helper_->setText(
            "No languages selected \u2014 captures the target in its current language.");
    helper_->setVisible(all || view_.languages.empty());
    chips_->setVisible(!all && !view_.languages.empty());
    chipsHelper_->setVisible(chips_->isVisibleTo(this));
    if (shownOnce_ && shown_ == view_.languages)
        return;
    shownOnce_ = true;
    shown_ = view_.languages;
    clearLayout(flow_);
    for (const LanguageSelection& language : view_.languages) {
        auto* chip = new LanguageChip(qs(language.label), chips_);
        chip->onRemove = [this, language] { view_.removeLanguage(language); };
        flow_->addWidget(chip);
    }
}

}  // namespace zd::app
