// The main window's tiles and chips: their selected and unselected looks by pixels, what a
// click calls, and the pictures they draw.
#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <functional>
#include <memory>

#include "AppTestSupport.h"
#include "controls/AppearanceToggleTile.h"
#include "controls/BackgroundKindTile.h"
#include "controls/CheckerboardView.h"
#include "controls/IconToggleChip.h"
#include "controls/LanguageChip.h"
#include "controls/PresetTile.h"
#include "controls/Tile.h"

namespace zd::app {
namespace {

// How far a pixel is from a colour, channel by channel.
int distance(QRgb a, QColor b) {
    return std::abs(qRed(a) - b.red()) + std::abs(qGreen(a) - b.green()) +
           std::abs(qBlue(a) - b.blue());
}

struct TilesTest : testing::AppTest {
    QColor accent = accentColor(QApplication::palette());
};

TEST_F(TilesTest, SelectedTilesHaveAnAccentBorderAndEveryClickCallsBack) {
    auto plain = std::make_unique<Tile>();
    plain->setLabel("Light");
    std::vector<std::pair<const char*, std::unique_ptr<SelectableTile>>> tiles;
    tiles.emplace_back("Tile", std::move(plain));
    tiles.emplace_back("AppearanceToggleTile",
                       std::make_unique<AppearanceToggleTile>(AppearanceMode::dark));
    tiles.emplace_back("BackgroundKindTile",
                       std::make_unique<BackgroundKindTile>(BackgroundKind::color));
    tiles.emplace_back("IconToggleChip",
                       std::make_unique<IconToggleChip>("timer", QStringLiteral("Countdown")));
    for (const auto& [name, tile] : tiles) {
        tile->resize(tile->sizeHint().expandedTo(QSize(30, 24)));
        int taps = 0;
        tile->onTap = [&, inner = tile->onTap] {
            if (inner)
                inner();
            ++taps;
        };
        const QPoint edge(0, tile->height() / 2);  // on the border, inside the edge
        const int off = distance(testing::grabbed(*tile).pixel(edge), accent);
        tile->setSelected(true);
        const int on = distance(testing::grabbed(*tile).pixel(edge), accent);
        EXPECT_LT(on + 100, off) << name;
        QTest::mouseClick(tile.get(), Qt::LeftButton, {}, QPoint(tile->width() - 4, 4));
        EXPECT_EQ(taps, 1) << name;
    }
    // The chip's click flips its value and says so.
    IconToggleChip chip("camera.viewfinder", QStringLiteral("Shadow"));
    bool told = false;
    chip.onChange = [&](bool on) { told = on; };
    QTest::mouseClick(&chip, Qt::LeftButton);
    EXPECT_TRUE(chip.isOn() && told);
    EXPECT_EQ(chip.size(), QSize(30, 24));
}

TEST_F(TilesTest, TileWithoutDetailIsOneLine) {
    Tile plain;
    plain.setLabel("Light");
    Tile detailed;
    detailed.setLabel("Light");
    detailed.setDetail(QStringLiteral("A second line"));
    EXPECT_LT(plain.heightForWidth(200), detailed.heightForWidth(200));
    Tile compact(nullptr, true);
    compact.setLabel("Light");
    EXPECT_LT(compact.heightForWidth(200), plain.heightForWidth(200));
}

TEST_F(TilesTest, PresetGlyphsShareTheScreenByAreaAndNameThemselves) {
    const QRectF area(0, 0, 160, 100);
    const auto areaOf = [&](WindowSizePreset p) {
        const QRectF r = PresetTile::glyphRect(p, area);
        return r.width() * r.height();
    };
    EXPECT_NEAR(areaOf(WindowSizePreset::half) / areaOf(WindowSizePreset::full), 0.5, 1e-9);
    EXPECT_NEAR(areaOf(WindowSizePreset::threeQ) / areaOf(WindowSizePreset::full), 0.75, 1e-9);
    EXPECT_EQ(PresetTile::glyphRect(WindowSizePreset::full, area).size(), QSizeF(147.2, 90));
    EXPECT_TRUE(PresetTile::glyphRect(WindowSizePreset::current, area).isNull());

    PresetTile tile(WindowSizePreset::half);
    EXPECT_EQ(tile.toolTip().toStdString(),
              "\u00bd screen \u2014 Half the visible-screen area, centered.");
    tile.resize(96, 60);
    int taps = 0;
    tile.onTap = [&] { ++taps; };
    QTest::mouseClick(&tile, Qt::LeftButton);
    EXPECT_EQ(taps, 1);
    // The glyph's centre is the accent at 60 %; selection thickens the outline in the accent.
    EXPECT_LT(distance(testing::grabbed(tile).pixel(48, 30), accent), 200);
    EXPECT_GT(distance(testing::grabbed(tile).pixel(1, 30), accent), 150);
    tile.setSelected(true);
    EXPECT_LT(distance(testing::grabbed(tile).pixel(1, 30), accent), 150);
}

TEST_F(TilesTest, LanguageChipIsRemovedByAClickOnTheTextOrTheSymbol) {
    LanguageChip chip(QStringLiteral("German"));
    chip.resize(chip.sizeHint());
    int removals = 0;
    chip.onRemove = [&] { ++removals; };
    QTest::mouseClick(&chip, Qt::LeftButton, {}, QPoint(12, chip.height() / 2));
    QTest::mouseClick(&chip, Qt::LeftButton, {}, QPoint(chip.width() - 12, chip.height() / 2));
    EXPECT_EQ(removals, 2);
}

TEST_F(TilesTest, BackgroundTilesDrawTheCheckerboardTheColourAndThePicture) {
    const auto centre = [](BackgroundKindTile& tile) {
        tile.resize(96, 60);
        return testing::grabbed(tile).pixel(48, 30);
    };
    BackgroundKindTile colour(BackgroundKind::color);
    colour.setColor(QColor(200, 30, 40));
    EXPECT_LT(distance(centre(colour), QColor(200, 30, 40)), 6);

    QTemporaryDir dir;
    const QString path = QDir(dir.path()).filePath("green.png");
    QImage green(32, 20, QImage::Format_RGB32);
    green.fill(QColor(20, 180, 60));
    ASSERT_TRUE(green.save(path));
    BackgroundKindTile picture(BackgroundKind::image);
    picture.setImagePath(path);
    EXPECT_LT(distance(centre(picture), QColor(20, 180, 60)), 6);
    // The file gone: the photo symbol on a faint fill, as without a file.
    QFile::remove(path);
    BackgroundKindTile none(BackgroundKind::image);
    EXPECT_EQ(testing::grabbed(picture), (none.resize(96, 60), testing::grabbed(none)));
    EXPECT_EQ(picture.toolTip(), "Image");

    QImage board(13, 7, QImage::Format_ARGB32);
    QPainter painter(&board);
    paintCheckerboard(painter, QRectF(0, 0, 13, 7), 6);
    painter.end();
    EXPECT_EQ(qGray(board.pixel(0, 0)), 235);   // 0.92 where i + j is even
    EXPECT_EQ(qGray(board.pixel(6, 0)), 199);   // 0.78 where it is odd
    EXPECT_EQ(qGray(board.pixel(12, 6)), 199);  // the last, cut-off column and row
}

}  // namespace
}  // namespace zd::app
