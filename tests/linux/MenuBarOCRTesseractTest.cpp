// Menu titles read by tesseract from a menu bar strip drawn with Qt, in English, German and
// Japanese: the application's name and the clock are left out.

#include <gtest/gtest.h>

#include <QFont>
#include <QImage>
#include <QPainter>

#include "ImageConversion.h"
#include "support/RunHarness.h"

namespace zd {
namespace {

using Strings = std::vector<std::string>;

// A bar 1440 points wide at twice its size: the name in bold, the titles, a clock at the right.
Image menuBar(const std::string& appName, const Strings& titles) {
    testing::ensureGuiApplication();
    QImage image(2880, 48, QImage::Format_ARGB32_Premultiplied);
    image.fill(QColor(236, 236, 236));
    QPainter painter(&image);
    painter.setPen(Qt::black);
    QFont font("Noto Sans CJK JP");
    font.setPixelSize(26);
    font.setBold(true);
    painter.setFont(font);
    int x = 40;
    painter.drawText(x, 34, QString::fromStdString(appName));
    x += painter.fontMetrics().horizontalAdvance(QString::fromStdString(appName)) + 44;
    font.setBold(false);
    painter.setFont(font);
    for (const auto& title : titles) {
        painter.drawText(x, 34, QString::fromStdString(title));
        x += painter.fontMetrics().horizontalAdvance(QString::fromStdString(title)) + 44;
    }
    painter.drawText(2600, 34, "Sun 12:41");
    painter.end();
    return fromQImage(image);
}

struct BarCase {
    const char* appName;
    Strings titles;
};
void PrintTo(const BarCase& c, std::ostream* os) {
    *os << c.titles.front();
}

class MenuBarOCRWithTesseract : public ::testing::TestWithParam<BarCase> {};

TEST_P(MenuBarOCRWithTesseract, ReadsTheTitlesInOrder) {
    const auto& bar = GetParam();
    EXPECT_EQ(testing::menuTitlesOn(menuBar(bar.appName, bar.titles), bar.appName), bar.titles);
}

INSTANTIATE_TEST_SUITE_P(
    Languages, MenuBarOCRWithTesseract,
    ::testing::Values(BarCase{"Editor", {"File", "Edit", "View", "Window", "Help"}},
                      BarCase{"Editor", {"Datei", "Bearbeiten", "Ansicht", "Fenster", "Hilfe"}},
                      BarCase{"テキスト", {"ファイル", "編集", "表示", "ウインドウ", "ヘルプ"}}));

}  // namespace
}  // namespace zd
