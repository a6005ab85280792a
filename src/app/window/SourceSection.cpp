#include "window/SourceSection.h"

#include <QVBoxLayout>

#include "ui/PickerTexts.h"
#include "ui/WindowTexts.h"
#include "window/SectionStyle.h"

namespace zd::app {

SourceSection::SourceSection(ContentView& view, QWidget* parent)
    : QWidget(parent),
      view_(view),
      heading_(sectionLabel("Source")),
      picker_(new Picker(this)),
      helper_(helperLine("Optional \u2014 the chosen app gets brought to the front before the "
                         "capture so its window is the active one in the screenshot.")) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(6);
    column->addWidget(heading_);
    column->addWidget(picker_);
    column->addWidget(helper_);
    for (ViewChange group : {ViewChange::lists, ViewChange::selection, ViewChange::settings})
        subscriptions_.push_back(view_.subscribe(group, [this] { refresh(); }));
    refresh();
}

void SourceSection::refresh() {
    const CaptureScope scope = view_.captureScope;
    const bool single = scope == CaptureScope::singleWindow;
    heading_->setText(single ? "SOURCE" : "FOREGROUND APP");
    helper_->setVisible(!single);
    std::vector<Picker::Item> items;
    items.emplace_back(std::nullopt, WindowTexts::noTargetItem(scope));
    for (const CaptureTarget& target : view_.targets)
        items.emplace_back(target.id, targetText(target));
    picker_->update(
        WindowTexts::targetSelectionLabel(view_.targets, view_.selectedTargetID, scope), items,
        [this](const std::optional<std::uint32_t>& id) { view_.setSelectedTargetID(id); });
}

}  // namespace zd::app
