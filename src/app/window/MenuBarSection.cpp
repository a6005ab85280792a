#include "window/MenuBarSection.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSlider>
#include <QVBoxLayout>

#include "controls/IconToggleChip.h"
#include "controls/Tile.h"
#include "ui/WindowTexts.h"
#include "window/SectionStyle.h"

namespace zd::app {

namespace {

Tile* accessoryTile(const QString& label, const QString& detail, QWidget* parent) {
    auto* tile = new Tile(parent);
    tile->setLabel(label);
    tile->setDetail(detail);
    return tile;
}

}  // namespace

MenuBarSection::MenuBarSection(ContentView& view, QWidget* parent)
    : QWidget(parent),
      view_(view),
      visible_(new QCheckBox(this)),
      body_(new QWidget(this)),
      real_(
          accessoryTile("Real accessories", "Keep the live menu bar exactly as captured.", body_)),
      clean_(accessoryTile("Clean accessories",
                           "Replace the right side with a tidy 9:41 AM clock, full battery, and "
                           "stock icons.",
                           body_)),
      accessories_(new QWidget(body_)),
      clock_(new QLineEdit(accessories_)),
      battery_(new QSlider(Qt::Horizontal, accessories_)),
      percent_(new QLabel(accessories_)),
      spacer_(new QWidget(accessories_)) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    auto* header = new QHBoxLayout;
    header->addWidget(sectionLabel("Menu bar"));
    header->addStretch(1);
    visible_->setAccessibleName("Menu bar");
    header->addWidget(visible_);
    column->addLayout(header);
    column->addWidget(body_);
    connect(visible_, &QCheckBox::clicked, this,
            [this](bool on) { change([on](MenuBarConfig& c) { c.visible = on; }); });

    auto* bodyColumn = new QVBoxLayout(body_);
    bodyColumn->setContentsMargins(0, 0, 0, 0);
    bodyColumn->setSpacing(8);
    auto* tiles = new QHBoxLayout;
    tiles->setSpacing(8);
    tiles->addWidget(real_, 1);
    tiles->addWidget(clean_, 1);
    bodyColumn->addLayout(tiles);
    bodyColumn->addWidget(accessories_);
    real_->onTap = [this] { change([](MenuBarConfig& c) { c.replaceAccessories = false; }); };
    clean_->onTap = [this] { change([](MenuBarConfig& c) { c.replaceAccessories = true; }); };

    auto* accessoriesColumn = new QVBoxLayout(accessories_);
    accessoriesColumn->setContentsMargins(0, 0, 0, 0);
    accessoriesColumn->setSpacing(8);
    auto* clockRow = new QHBoxLayout;
    auto* clockLabel = secondaryText("Clock", 11);
    clockLabel->setFixedWidth(44);
    clockRow->addWidget(clockLabel);
    clock_->setPlaceholderText("9:41 AM");
    clock_->setFont(uiFont(12));
    clockRow->addWidget(clock_, 1);
    accessoriesColumn->addLayout(clockRow);
    connect(clock_, &QLineEdit::textEdited, this, [this](const QString& text) {
        change([text](MenuBarConfig& c) { c.clockText = text.toStdString(); });
    });
    accessoriesColumn->addWidget(sectionLabel("Accessories"));

    auto* chipRow = new QHBoxLayout;
    chipRow->setSpacing(8);
    using Flag = bool MenuBarConfig::*;
    const std::array<std::tuple<const char*, const char*, Flag>, 4> chips{{
        {"wifi", "Wi-Fi", &MenuBarConfig::showWiFi},
        {"magnifyingglass", "Spotlight", &MenuBarConfig::showSpotlight},
        {"switch.2", "Control Center", &MenuBarConfig::showControlCenter},
        {"battery.100percent", "Battery", &MenuBarConfig::showBattery},
    }};
    for (std::size_t index = 0; index < chips.size(); ++index) {
        const auto& [symbol, label, flag] = chips[index];
        auto* chip = new IconToggleChip(symbol, label, accessories_);
        chip->onChange = [this, flag](bool on) {
            change([flag, on](MenuBarConfig& c) { c.*flag = on; });
        };
        chips_[index] = chip;
        chipRow->addWidget(chip);
    }
    battery_->setRange(0, 100);
    connect(battery_, &QSlider::valueChanged, this, [this](int value) {
        if (value != view_.menuBar.batteryPercent)
            change([value](MenuBarConfig& c) { c.batteryPercent = value; });
    });
    chipRow->addWidget(battery_, 1);
    percent_->setFont(uiFont(11));
    percent_->setFixedWidth(38);
    chipRow->addWidget(percent_);
    spacer_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    chipRow->addWidget(spacer_, 1);
    accessoriesColumn->addLayout(chipRow);

    settings_ = view_.subscribe(ViewChange::settings, [this] { refresh(); });
    refresh();
}

void MenuBarSection::change(const std::function<void(MenuBarConfig&)>& edit) {
    MenuBarConfig config = view_.menuBar;
    edit(config);
    view_.setMenuBar(config);
}

void MenuBarSection::refresh() {
    const MenuBarConfig& bar = view_.menuBar;
    visible_->setChecked(bar.visible);
    body_->setVisible(bar.visible);
    real_->setSelected(!bar.replaceAccessories);
    clean_->setSelected(bar.replaceAccessories);
    accessories_->setVisible(bar.replaceAccessories);
    if (!clock_->hasFocus())
        clock_->setText(qs(bar.clockText));
    const std::array<bool, 4> on{bar.showWiFi, bar.showSpotlight, bar.showControlCenter,
                                 bar.showBattery};
    for (std::size_t index = 0; index < on.size(); ++index)
        chips_[index]->setOn(on[index]);
    chips_[3]->setSymbol(WindowTexts::batterySymbol(bar.batteryPercent));
    battery_->setVisible(bar.showBattery);
    percent_->setVisible(bar.showBattery);
    spacer_->setVisible(!bar.showBattery);
    if (battery_->value() != bar.batteryPercent)
        battery_->setValue(bar.batteryPercent);
    percent_->setText(QString("%1%").arg(bar.batteryPercent));
}

}  // namespace zd::app
