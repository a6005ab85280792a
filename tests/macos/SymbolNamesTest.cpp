// The spellings tried for a symbol: macOS 13 knows the battery levels only by their older
// names, so without them the synthetic bar of a macOS 13 system would show our artwork.

#include <gtest/gtest.h>

#include "macos/SymbolNames.h"

namespace zd::mac {
namespace {

TEST(SymbolNames, BatteryLevelsFallBackToTheirOlderNamesAndOthersStayAlone) {
    using Names = std::vector<std::string>;
    EXPECT_EQ(SymbolNames::spellings("battery.0percent"), (Names{"battery.0percent", "battery.0"}));
    EXPECT_EQ(SymbolNames::spellings("battery.100percent"),
              (Names{"battery.100percent", "battery.100"}));
    for (const char* name :
         {"wifi", "apple.logo", "battery.percent", "battery.lowpercent", "battery.100percent.bolt"})
        EXPECT_EQ(SymbolNames::spellings(name), Names{name}) << name;
}

}  // namespace
}  // namespace zd::mac
