#include "window/ScopeSection.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "controls/Tile.h"
#include "window/SectionStyle.h"

namespace zd::app {

ScopeSection::ScopeSection(ContentView& view, QWidget* parent) : QWidget(parent), view_(view) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(sectionLabel("Capture mode"));
    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    for (CaptureScope scope : allCases<CaptureScope>()) {
        auto* tile = new Tile(this);
        tile->setLabel(qs(tileTitle(scope)));
        tile->setDetail(qs(tileDetail(scope)));
        tile->onTap = [this, scope] { view_.setCaptureScope(scope); };
        tiles_[caseIndex(scope)] = tile;
        row->addWidget(tile, 1);
    }
    column->addLayout(row);
    settings_ = view_.subscribe(ViewChange::settings, [this] { refresh(); });
    refresh();
}

void ScopeSection::refresh() {
    for (CaptureScope scope : allCases<CaptureScope>())
        tile(scope)->setSelected(scope == view_.captureScope);
}

}  // namespace zd::app
