#include "store/AppStreamScreenshots.h"

#include <gtest/gtest.h>

namespace zd {
namespace {

TEST(AppStreamScreenshots, OneScreenshotPerPictureWithAnImagePerLanguage) {
    const std::vector<AppStreamScreenshots::Picture> pictures{
        {"pt-BR/light.png", "pt-BR", "light", 1592, 1052},
        {"pt-BR/dark.png", "pt-BR", "dark", 1592, 1052},
        {"ja/light (2).png", "ja", "light", 1600, 1052},
        {"ja/dark.png", "ja", "dark", 1592, 1052}};
    EXPECT_EQ(AppStreamScreenshots::xml(pictures, "https://example.org/shots"),
              R"(<screenshots>
  <screenshot type="default">
    <!-- light: say what this picture shows -->
    <caption></caption>
    <image type="source" width="1592" height="1052">https://example.org/shots/pt-BR/light.png</image>
    <image type="source" width="1592" height="1052" xml:lang="pt_BR">https://example.org/shots/pt-BR/light.png</image>
    <image type="source" width="1600" height="1052" xml:lang="ja">https://example.org/shots/ja/light%20%282%29.png</image>
  </screenshot>
  <screenshot>
    <!-- dark: say what this picture shows -->
    <caption></caption>
    <image type="source" width="1592" height="1052">https://example.org/shots/pt-BR/dark.png</image>
    <image type="source" width="1592" height="1052" xml:lang="pt_BR">https://example.org/shots/pt-BR/dark.png</image>
    <image type="source" width="1592" height="1052" xml:lang="ja">https://example.org/shots/ja/dark.png</image>
  </screenshot>
</screenshots>
)");
}

}  // namespace
}  // namespace zd
