#include "composition/MenuBarRenderer.h"

#include <gtest/gtest.h>

#include "testing/RecordingCanvas.h"

namespace zd {
namespace {

using Kind = CanvasCall::Kind;

// Where a text of this size is drawn so its capitals centre on yc, with the recording metrics.
double textY(double yc, double size) {
    return yc - 0.7 * size / 2 - 0.2 * size;
}
double textW(std::string_view text, double size) {
    return RecordingCanvas::metricsFor(text, size).width;
}

class MenuBarLeftSide : public ::testing::TestWithParam<double> {};

TEST_P(MenuBarLeftSide, LengthsFollowTheCanvasScale) {
    const double c = GetParam();
    const Rect bar{0, 1800 - 24 * c, 1440 * c, 24 * c};
    MenuBarConfig config;
    config.appName = "Notes";
    config.menuTitles = {"Ablage", "Bearbeiten"};
    RecordingCanvas canvas(static_cast<int>(bar.width), 1800);

    MenuBarRenderer::draw(canvas, bar, AppearanceMode::light, config, c);

    const auto& calls = canvas.record().calls;
    ASSERT_EQ(calls.front().kind, Kind::save);
    ASSERT_EQ(calls.back().kind, Kind::restore);
    const auto fills = canvas.record().callsOf(Kind::fillRect);
    ASSERT_EQ(fills.size(), 2u);
    EXPECT_EQ(fills[0].rect, (Rect{0, 0, bar.width, bar.height}));
    EXPECT_EQ(fills[0].color, Color::white(0.97, 0.85));
    EXPECT_EQ(fills[0].offset, (Point{0, bar.y}));  // drawn relative to the bar
    EXPECT_EQ(fills[1].rect, (Rect{0, 0, bar.width, std::max(0.5 * c, 0.5)}));
    EXPECT_EQ(fills[1].color, Color::black(0.12));

    const double yc = bar.height / 2;
    const auto logo = canvas.record().callsOf(Kind::drawSymbol).front();
    EXPECT_EQ(logo.text, "apple.logo");
    EXPECT_DOUBLE_EQ(logo.number, 14 * c);
    EXPECT_DOUBLE_EQ(logo.point.x, 14 * c);
    EXPECT_DOUBLE_EQ(logo.point.y, yc + 1.0 - 14 * c / 2);  // nudged up one pixel, unscaled

    const auto texts = canvas.record().callsOf(Kind::drawText);
    ASSERT_GE(texts.size(), 3u);
    EXPECT_EQ(texts[0].text, "Notes");
    EXPECT_EQ(texts[0].weight, FontWeight::semibold);
    EXPECT_DOUBLE_EQ(texts[0].number, 13 * c);
    EXPECT_EQ(texts[0].point, (Point{36 * c, textY(yc, 13 * c)}));
    const double firstTitleX = 36 * c + textW("Notes", 13 * c) + 16 * c;
    EXPECT_EQ(texts[1].text, "Ablage");
    EXPECT_EQ(texts[1].weight, FontWeight::regular);
    EXPECT_DOUBLE_EQ(texts[1].point.x, firstTitleX);
    EXPECT_EQ(texts[2].text, "Bearbeiten");
    EXPECT_DOUBLE_EQ(texts[2].point.x, firstTitleX + textW("Ablage", 13 * c) + 14 * c);
}

INSTANTIATE_TEST_SUITE_P(Scales, MenuBarLeftSide, ::testing::Values(1.0, 2.0, 0.5));

TEST(MenuBarRenderer, EmptyTitlesGiveTheDefaultsAndNoNameStartsAt36c) {
    MenuBarConfig config;
    config.appName = "";
    RecordingCanvas canvas(1440, 900);
    MenuBarRenderer::draw(canvas, {0, 876, 1440, 24}, AppearanceMode::dark, config, 1.0);

    const auto texts = canvas.record().callsOf(Kind::drawText);
    std::vector<std::string> left;
    for (std::size_t i = 0; i < 5; ++i)
        left.push_back(texts[i].text);
    EXPECT_EQ(left, (std::vector<std::string>{"File", "Edit", "View", "Window", "Help"}));
    EXPECT_DOUBLE_EQ(texts[0].point.x, 36.0);
    EXPECT_EQ(texts[0].color, Color::white(1.0));  // dark draws white text
    EXPECT_EQ(canvas.record().callsOf(Kind::fillRect)[0].color, Color::white(0.1, 0.85));
    EXPECT_EQ(canvas.record().callsOf(Kind::fillRect)[1].color, Color::black(0.6));
}

TEST(MenuBarRenderer, NoBackgroundPaintsNoFillOrHairline) {
    MenuBarConfig config;
    config.hasBackground = false;
    RecordingCanvas canvas(1440, 900);
    MenuBarRenderer::draw(canvas, {0, 876, 1440, 24}, AppearanceMode::dark, config, 1.0);
    EXPECT_TRUE(canvas.record().callsOf(Kind::fillRect).empty());
}

TEST(MenuBarRenderer, ScaleBelowATenthIsRaised) {
    MenuBarConfig config;
    config.appName = "A";
    RecordingCanvas canvas(100, 100);
    MenuBarRenderer::draw(canvas, {0, 90, 100, 10}, AppearanceMode::light, config, 0.01);
    const auto texts = canvas.record().callsOf(Kind::drawText);
    EXPECT_DOUBLE_EQ(texts[0].number, 1.3);
    EXPECT_DOUBLE_EQ(texts[0].point.x, 3.6);
    EXPECT_DOUBLE_EQ(canvas.record().callsOf(Kind::fillRect)[1].rect.height, 0.5);
}

TEST(MenuBarRenderer, MissingLogoDrawsNothingAndTheNameStillStartsAt36c) {
    MenuBarConfig config;
    config.appName = "Notes";
    RecordingCanvas canvas(2880, 1800, nullptr, {"apple.logo"});
    MenuBarRenderer::draw(canvas, {0, 1752, 2880, 48}, AppearanceMode::light, config, 2.0);
    for (const auto& symbol : canvas.record().callsOf(Kind::drawSymbol)) {
        EXPECT_NE(symbol.text, "apple.logo");
    }
    EXPECT_DOUBLE_EQ(canvas.record().callsOf(Kind::drawText)[0].point.x, 72.0);
}

TEST(MenuBarRenderer, BatterySymbolLimits) {
    const std::vector<std::pair<int, std::string_view>> table{
        {-5, "battery.0percent"},    {12, "battery.0percent"},   {13, "battery.25percent"},
        {37, "battery.25percent"},   {38, "battery.50percent"},  {62, "battery.50percent"},
        {63, "battery.75percent"},   {87, "battery.75percent"},  {88, "battery.100percent"},
        {100, "battery.100percent"}, {250, "battery.100percent"}};
    for (const auto& [percent, name] : table) {
        EXPECT_EQ(MenuBarRenderer::batterySymbolName(percent), name) << percent;
    }
}

TEST(MenuBarRightCluster, ItemsStandRightToLeftAtTheTablesAdvances) {
    MenuBarConfig config;  // clock "9:41 AM", battery 100, all three symbols
    config.batteryPercent = 87;
    config.customAccessories = {"A", "BB"};
    RecordingCanvas canvas(1440, 900);
    MenuBarRenderer::drawRightCluster(canvas, {0, 876, 1440, 24}, AppearanceMode::light, config,
                                      1.0);

    EXPECT_TRUE(canvas.record().callsOf(Kind::fillRect).empty());
    const auto texts = canvas.record().callsOf(Kind::drawText);
    const auto symbols = canvas.record().callsOf(Kind::drawSymbol);
    ASSERT_EQ(texts.size(), 4u);
    ASSERT_EQ(symbols.size(), 4u);
    // Clock: 7 characters at 13 → 45.5 wide, ending 12 from the edge.
    EXPECT_EQ(texts[0].text, "9:41 AM");
    EXPECT_DOUBLE_EQ(texts[0].point.x, 1382.5);
    EXPECT_DOUBLE_EQ(texts[0].point.y, textY(12, 13));
    EXPECT_EQ(texts[1].text, "87%");  // exact value beside the 75 symbol
    EXPECT_DOUBLE_EQ(texts[1].point.x, 1382.5 - 10 - 19.5);
    EXPECT_EQ(symbols[0].text, "battery.75percent");
    EXPECT_DOUBLE_EQ(symbols[0].point.x, 1353.0 - 6 - 24);
    EXPECT_DOUBLE_EQ(symbols[0].point.y, 12 - 7);  // centred on the bar, no nudge
    EXPECT_EQ(symbols[1].text, "switch.2");
    EXPECT_DOUBLE_EQ(symbols[1].point.x, 1323.0 - 8 - 22);
    EXPECT_EQ(symbols[2].text, "magnifyingglass");
    EXPECT_DOUBLE_EQ(symbols[2].point.x, 1293.0 - 6 - 22);
    EXPECT_EQ(symbols[3].text, "wifi");
    EXPECT_DOUBLE_EQ(symbols[3].point.x, 1265.0 - 6 - 22);
    // Accessories at 14: the last one drawn first, the first one leftmost.
    EXPECT_EQ(texts[2].text, "BB");
    EXPECT_DOUBLE_EQ(texts[2].number, 14.0);
    EXPECT_DOUBLE_EQ(texts[2].point.x, 1237.0 - 6 - 12 - 14);
    EXPECT_EQ(texts[3].text, "A");
    EXPECT_DOUBLE_EQ(texts[3].point.x, 1205.0 - 12 - 7);
    EXPECT_DOUBLE_EQ(MenuBarRenderer::rightClusterWidth(canvas, config, 1.0), 1440.0 - 1186.0);
}

TEST(MenuBarRightCluster, MissingSymbolsStillMoveTheCursor) {
    MenuBarConfig config;
    config.customAccessories = {"X"};
    RecordingCanvas all(1440, 900);
    RecordingCanvas none(1440, 900, nullptr,
                         {"wifi", "switch.2", "magnifyingglass", "battery.100percent"});
    MenuBarRenderer::drawRightCluster(all, {0, 0, 1440, 24}, AppearanceMode::light, config, 1.0);
    MenuBarRenderer::drawRightCluster(none, {0, 0, 1440, 24}, AppearanceMode::light, config, 1.0);
    EXPECT_TRUE(none.record().callsOf(Kind::drawSymbol).empty());
    EXPECT_EQ(all.record().callsOf(Kind::drawText).back().point,
              none.record().callsOf(Kind::drawText).back().point);
}

// The width that the compositor erases must be exactly the distance the cursor travels: the
// leftmost item drawn, with the gap that follows it, ends at W − width.
TEST(MenuBarRightCluster, WidthEqualsTheCursorsTravelForEveryConfiguration) {
    const std::vector<std::vector<std::string>> accessoryLists{{}, {"VPN"}, {"A", "Longer one"}};
    const std::vector<std::string> clocks{"", "9:41 AM", "Mon 10. Mär 14:02"};
    for (double c : {0.05, 0.5, 1.0, 2.0, 1.7777}) {
        for (int flags = 0; flags < 16 * 9; ++flags) {
            MenuBarConfig config;
            config.showBattery = (flags & 1) != 0;
            config.showControlCenter = (flags & 2) != 0;
            config.showSpotlight = (flags & 4) != 0;
            config.showWiFi = (flags & 8) != 0;
            config.customAccessories = accessoryLists[flags / 16 % 3];
            config.clockText = clocks[flags / 48];
            config.batteryPercent = 5 + flags % 16 * 6;
            const double k = std::max(c, 0.1);
            RecordingCanvas canvas(3000, 100);
            const double width = MenuBarRenderer::rightClusterWidth(canvas, config, c);
            MenuBarRenderer::drawRightCluster(canvas, {0, 0, 3000, 30}, AppearanceMode::dark,
                                              config, c);
            double leftmost = 3000;
            double trailing = 0;
            for (const auto& call : canvas.record().calls) {
                if ((call.kind != Kind::drawText && call.kind != Kind::drawSymbol) ||
                    call.point.x > leftmost)
                    continue;
                leftmost = call.point.x;
                if (call.kind == Kind::drawSymbol) {
                    trailing = call.text.starts_with("battery") ? 8 * k : 6 * k;
                } else {
                    trailing = call.number == 14 * k
                                   ? 0
                                   : (call.text == config.clockText ? 10 * k : 6 * k);
                }
            }
            EXPECT_NEAR(3000 - (leftmost - trailing), width, 1e-9)
                << "c=" << c << " flags=" << flags;
        }
    }
}

TEST(MenuBarRightCluster, NothingSetIsTheClockAloneAndAnEmptyClockTakes22c) {
    MenuBarConfig config;
    config.showBattery = config.showControlCenter = config.showSpotlight = config.showWiFi = false;
    config.clockText = "";
    RecordingCanvas canvas(2880, 100);
    EXPECT_DOUBLE_EQ(MenuBarRenderer::rightClusterWidth(canvas, config, 2.0), 44.0);
}

}  // namespace
}  // namespace zd
