// Writes the README's pictures of the application's widgets: the progress panel in three
// states and a sheet of every control in Light and in Dark, as PNGs into the folder given.
//   zd_screenshots docs/images      (run by scripts/screenshots, offscreen at density 2)
#include <QApplication>
#include <QDir>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QStyleFactory>

#include <iostream>

#include "controls/AppPalette.h"
#include "controls/AppearanceToggleTile.h"
#include "controls/BackgroundKindTile.h"
#include "controls/FillingPopUp.h"
#include "controls/IconToggleChip.h"
#include "controls/LanguageChip.h"
#include "controls/PresetTile.h"
#include "controls/SymbolPainter.h"
#include "controls/Tile.h"
#include "panel/CaptureProgressView.h"
#include "panel/ProgressPanel.h"
#include "run/RunTexts.h"

namespace {

using namespace zd;
using namespace zd::app;

bool save(QWidget& widget, const QDir& folder, const QString& name) {
    const QString path = folder.filePath(name);
    const bool ok = widget.grab().toImage().save(path);
    std::cout << (ok ? "wrote " : "could not write ") << path.toStdString() << "\n";
    return ok;
}

// Every symbol of the window, in a row.
class SymbolRow : public QWidget {
  public:
    SymbolRow() { setFixedSize(static_cast<int>(std::size(kNames)) * 28, 24); }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        for (std::size_t i = 0; i < std::size(kNames); ++i) {
            paintSymbol(painter, kNames[i], 14, QPointF(14 + 28.0 * static_cast<double>(i), 12),
                        palette().color(QPalette::WindowText));
        }
    }

  private:
    static constexpr const char* kNames[] = {"rectangle.stack",
                                             "chevron.down",
                                             "plus.circle",
                                             "xmark.circle.fill",
                                             "sun.max.fill",
                                             "moon.fill",
                                             "checkmark.circle.fill",
                                             "circle",
                                             "photo",
                                             "timer",
                                             "camera.viewfinder",
                                             "folder.fill",
                                             "wifi",
                                             "magnifyingglass",
                                             "switch.2",
                                             "battery.75percent"};
};

QLabel* caption(const QString& text) {
    auto* label = new QLabel(text);
    QFont font = label->font();
    font.setPixelSize(11);
    font.setWeight(QFont::DemiBold);
    label->setFont(font);
    return label;
}

bool writeSheet(const QDir& folder, bool dark) {
    QWidget sheet;
    sheet.setPalette(appPalette(dark));
    sheet.setAutoFillBackground(true);
    sheet.setFixedWidth(700);
    auto* grid = new QGridLayout(&sheet);
    grid->setContentsMargins(20, 20, 20, 20);
    grid->setHorizontalSpacing(16);
    grid->setVerticalSpacing(12);
    int rows = 0;
    // One row of the sheet: its caption, then the controls from the left.
    auto row = [&](const char* name, std::initializer_list<QWidget*> widgets) {
        grid->addWidget(caption(name), rows, 0);
        auto* line = new QHBoxLayout;
        line->setSpacing(8);
        for (QWidget* w : widgets)
            line->addWidget(w);
        if (widgets.size() > 0 &&
            widgets.begin()[0]->sizePolicy().horizontalPolicy() != QSizePolicy::Expanding)
            line->addStretch();
        grid->addLayout(line, rows++, 1);
    };

    auto* chosen = new Tile;
    chosen->setLabel("Single window");
    chosen->setDetail(QStringLiteral("One window, relaunched in each language"));
    chosen->setSelected(true);
    auto* other = new Tile;
    other->setLabel("Multiple windows");
    other->setDetail(QStringLiteral("A stack at their real positions"));
    auto* compact = new Tile(nullptr, true);
    compact->setLabel("New folder");
    row("Tile", {chosen, other, compact});

    std::vector<QWidget*> presets;
    for (auto preset : allCases<WindowSizePreset>()) {
        auto* tile = new PresetTile(preset);
        tile->setSelected(preset == WindowSizePreset::half);
        tile->setFixedSize(96, 60);
        presets.push_back(tile);
    }
    row("PresetTile", {presets[0], presets[1], presets[2], presets[3]});

    auto* light = new AppearanceToggleTile(AppearanceMode::light);
    light->setOn(true);
    row("AppearanceToggleTile", {light, new AppearanceToggleTile(AppearanceMode::dark)});

    std::vector<QWidget*> kinds;
    for (auto kind : allCases<BackgroundKind>()) {
        auto* tile = new BackgroundKindTile(kind);
        tile->setColor(QColor(64, 120, 200));
        tile->setSelected(kind == BackgroundKind::color);
        tile->setFixedSize(96, 60);
        kinds.push_back(tile);
    }
    row("BackgroundKindTile", {kinds[0], kinds[1], kinds[2]});

    row("LanguageChip", {new LanguageChip("German"), new LanguageChip("French"),
                         new LanguageChip("Portuguese (Brazil)")});

    std::vector<QWidget*> chips;
    const std::pair<const char*, bool> toggles[] = {
        {"camera.viewfinder", true}, {"timer", false}, {"rectangle.stack", true}};
    for (const auto& [symbol, on] : toggles) {
        auto* chip = new IconToggleChip(symbol, symbol);
        chip->setOn(on);
        chips.push_back(chip);
    }
    row("IconToggleChip", {chips[0], chips[1], chips[2]});

    auto* popUp = new FillingPopUp<int>;
    popUp->update("Text Editor \u2014 Untitled Document 1",
                  {{1, "Text Editor \u2014 Untitled Document 1"}, {2, "Calculator"}}, nullptr);
    auto* absent = new FillingPopUp<int>;
    absent->update("No window", {}, nullptr);
    row("FillingPopUp", {popUp, absent});

    row("Symbols", {new SymbolRow});

    // The height the wrapped details need at this width.
    sheet.resize(sheet.width(), grid->totalHeightForWidth(sheet.width()));
    return save(sheet, folder, dark ? "controls-dark.png" : "controls-light.png");
}

bool writePanel(const QDir& folder, const QString& name, CaptureProgressModel& model) {
    // The dial's arm at 3/8 of a second: half-way between 12 and 3 o'clock.
    ProgressPanel panel(
        nullptr,
        [] {
            return std::optional<Rect>(Rect{0, 0, 1440, 900});
        },
        [] { return 0.375; });
    panel.setModel(&model);
    panel.present();
    return save(panel, folder, name);
}

}  // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    if (argc < 2) {
        std::cerr << "usage: zd_screenshots FOLDER\n";
        return 2;
    }
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    QApplication::setPalette(appPalette(false));
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    bool ok = true;

    CaptureProgressModel countdown;
    countdown.setStatusMessage(RunTexts::countdownStatus("Posing German", "Text Editor"));
    countdown.setCountdownRemaining(3);
    countdown.setShotsCompleted(1);
    countdown.setShotsTotal(4);
    ok &= writePanel(folder, "panel-countdown.png", countdown);

    CaptureProgressModel working;
    working.setCaptureStage(
        RunTexts::switchingLanguage("Text Editor", "Portuguese (Brazil)", 3, 4) +
        " waiting for its window to come back before the countdown starts again");
    working.setShotsCompleted(4);
    working.setShotsTotal(8);
    ok &= writePanel(folder, "panel-spinner.png", working);

    CaptureProgressModel stopping;
    stopping.setCaptureStage(RunTexts::stopping);
    ok &= writePanel(folder, "panel-stop.png", stopping);

    ok &= writeSheet(folder, false);
    ok &= writeSheet(folder, true);
    return ok ? 0 : 1;
}
