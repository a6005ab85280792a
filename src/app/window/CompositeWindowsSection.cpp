#include "window/CompositeWindowsSection.h"

#include <QPushButton>
#include <QVBoxLayout>

#include "ui/PickerTexts.h"
#include "ui/WindowTexts.h"
#include "window/CompositeWindowsPopover.h"
#include "window/SectionStyle.h"

namespace zd::app {

CompositeWindowsSection::CompositeWindowsSection(ContentView& view, QWidget* parent)
    : QWidget(parent),
      view_(view),
      spaces_(new FillingPopUp<std::uint64_t>(this)),
      button_(new QPushButton(this)),
      popover_(new CompositeWindowsPopover(view, this)) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(sectionLabel("Windows in composite"));
    column->addWidget(spaces_);
    button_->setFont(uiFont(12));
    button_->setIcon(symbolIcon("rectangle.stack", 14, palette().color(QPalette::ButtonText)));
    button_->setStyleSheet(
        "QPushButton { text-align: left; padding: 6px 10px; border: none; border-radius: 6px;"
        " background: rgba(128,128,128,26); }");
    connect(button_, &QPushButton::clicked, this, [this] { view_.setShowingWindowsPopover(true); });
    column->addWidget(button_);
    for (ViewChange group : {ViewChange::lists, ViewChange::selection, ViewChange::settings})
        subscriptions_.push_back(view_.subscribe(group, [this] { refresh(); }));
    refresh();
}

void CompositeWindowsSection::refresh() {
    std::vector<FillingPopUp<std::uint64_t>::Item> items;
    for (const Spaces::Info& space : view_.availableSpaces)
        items.emplace_back(space.id, spaceText(space));
    spaces_->update(WindowTexts::spacePickerLabel(view_.availableSpaces, view_.selectedSpaceID),
                    items, [this](const std::uint64_t& id) { view_.setSelectedSpaceID(id); });
    button_->setText(qs(WindowTexts::compositeWindowsButtonLabel(view_.compositeWindows)) +
                     QString::fromUtf8("  \u25BE"));
    if (view_.showingWindowsPopover && !popover_->isVisible() && isVisible())
        popover_->openBelow(button_);
    else if (!view_.showingWindowsPopover && popover_->isVisible())
        popover_->hide();
    popover_->refresh();
}

}  // namespace zd::app
