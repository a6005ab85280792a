#include "window/SizePresetSection.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "controls/PresetTile.h"
#include "window/SectionStyle.h"

namespace zd::app {

SizePresetSection::SizePresetSection(ContentView& view, RunServices& services, QWidget* parent)
    : QWidget(parent),
      view_(view),
      services_(services),
      grant_(new QPushButton("Grant Accessibility\u2026")) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    auto* header = new QHBoxLayout;
    header->addWidget(sectionLabel("Source window size"));
    header->addStretch(1);
    grant_->setFlat(true);
    grant_->setFont(uiFont(11));
    grant_->setStyleSheet("color: #ff9500; border: none;");
    connect(grant_, &QPushButton::clicked, this, [this] {
        services_.isAccessibilityTrusted(true);
        refresh();
    });
    header->addWidget(grant_);
    column->addLayout(header);
    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    for (WindowSizePreset preset : allCases<WindowSizePreset>()) {
        auto* tile = new PresetTile(preset, this);
        tile->onTap = [this, preset] { view_.setSizePreset(preset); };
        tiles_[caseIndex(preset)] = tile;
        row->addWidget(tile, 1);
    }
    column->addLayout(row);
    settings_ = view_.subscribe(ViewChange::settings, [this] { refresh(); });
    refresh();
}

void SizePresetSection::showEvent(QShowEvent* event) {
    refresh();  // the permission is asked anew each time the section comes into view
    QWidget::showEvent(event);
}

void SizePresetSection::refresh() {
    // Asked without the system's prompt; a platform without such a permission always trusts.
    grant_->setVisible(!services_.isAccessibilityTrusted(false));
    for (WindowSizePreset preset : allCases<WindowSizePreset>())
        tile(preset)->setSelected(preset == view_.sizePreset);
}

}  // namespace zd::app
