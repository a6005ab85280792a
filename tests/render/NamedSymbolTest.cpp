// Which drawing a named symbol gets: the platform's picture where it has the name, our artwork
// otherwise, nothing where both lack it; and the platform's picture painted in the plain colour.

#include "NamedSymbol.h"

#include <gtest/gtest.h>

#include "GuiApp.h"
#include "SymbolArtwork.h"

namespace zd {
namespace {

// A platform that knows only "wifi": 2 × 1 pixels, black where covered, drawn at 4 × 2.
std::optional<SystemSymbols::Symbol> onlyWifi(std::string_view name, double) {
    if (name != "wifi")
        return std::nullopt;
    return SystemSymbols::Symbol{{4, 2}, Image(2, 1, {0xff000000u, 0x80000000u})};
}

TEST(NamedSymbol, ThePlatformsPictureFirstThenOurArtworkThenNothing) {
    testing::ensureGuiApp();
    const auto wifi = NamedSymbol::find("wifi", 14, onlyWifi);
    ASSERT_TRUE(wifi);
    EXPECT_EQ(wifi->size, QSizeF(4, 2));
    EXPECT_FALSE(wifi->coverage.isNull());

    const auto battery = NamedSymbol::find("battery.50percent", 14, onlyWifi);
    ASSERT_TRUE(battery);
    EXPECT_TRUE(battery->coverage.isNull());
    EXPECT_FALSE(battery->shape.isEmpty());
    EXPECT_EQ(battery->size, *SymbolArtwork::naturalSize("battery.50percent", 14));

    EXPECT_FALSE(NamedSymbol::find("apple.logo", 14, onlyWifi));
}

TEST(NamedSymbol, ThePlatformsPictureIsPaintedInThePlainColourByItsCoverage) {
    testing::ensureGuiApp();
    QImage target(4, 2, QImage::Format_ARGB32_Premultiplied);
    target.fill(Qt::transparent);
    QPainter painter(&target);
    NamedSymbol::find("wifi", 14, onlyWifi)->paint(painter, {0, 0}, QColor(255, 0, 0));
    painter.end();
    // Fully covered: the colour; half covered: the colour at half (premultiplied), never black.
    EXPECT_EQ(target.pixel(0, 0), 0xffff0000u);
    EXPECT_NEAR(qAlpha(target.pixel(3, 1)), 0x80, 24);
    EXPECT_EQ(qRed(target.pixel(3, 1)), qAlpha(target.pixel(3, 1)));
    EXPECT_EQ(qGreen(target.pixel(3, 1)), 0);
}

}  // namespace
}  // namespace zd
