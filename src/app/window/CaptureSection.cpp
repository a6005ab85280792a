#include "window/CaptureSection.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "controls/AppearanceToggleTile.h"
#include "window/SectionStyle.h"

namespace zd::app {

CaptureSection::CaptureSection(ContentView& view, QWidget* parent)
    : QWidget(parent), view_(view), shadow_(new QCheckBox("Window shadow", this)) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(sectionLabel("Appearance"));
    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    for (AppearanceMode mode : allCases<AppearanceMode>()) {
        auto* tile = new AppearanceToggleTile(mode, this);
        tile->onTap = [this, mode] { view_.toggleAppearance(mode); };
        tiles_[caseIndex(mode)] = tile;
        row->addWidget(tile, 1);
    }
    column->addLayout(row);
    column->addWidget(shadow_);
    connect(shadow_, &QCheckBox::clicked, this, [this](bool on) { view_.setWindowShadow(on); });
    settings_ = view_.subscribe(ViewChange::settings, [this] { refresh(); });
    refresh();
}

void CaptureSection::refresh() {
    for (AppearanceMode mode : allCases<AppearanceMode>())
        tile(mode)->setOn(view_.enabledAppearances.contains(mode));
    shadow_->setChecked(view_.windowShadow);
}

}  // namespace zd::app
