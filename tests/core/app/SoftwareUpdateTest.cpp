#include "app/SoftwareUpdate.h"

#include <gtest/gtest.h>

namespace zd::SoftwareUpdate {
namespace {

TEST(SoftwareUpdate, ComparesVersionsPartByPartAsNumbers) {
    struct Case {
        const char* a;
        const char* b;
        int sign;
    };
    for (const auto& c :
         {Case{"1.10", "1.9", 1}, Case{"2", "2.0.0", 0}, Case{"0.1.0", "0.1.1", -1},
          Case{"3rc1", "3", 0}, Case{"", "0", 0}, Case{"1.2.3", "1.2", 1}, Case{"142", "99", 1}}) {
        const int r = compareVersions(c.a, c.b);
        EXPECT_EQ((r > 0) - (r < 0), c.sign) << c.a << " vs " << c.b;
    }
}

TEST(SoftwareUpdate, OffersTheNewestReleaseAboveOurs) {
    const std::vector<Release> feed{{"0.2.0", "", "https://x/0.2"},
                                    {"0.10.0", "0.10", "https://x/0.10"},
                                    {"", "9", "https://x/broken"},
                                    {"0.1.0", "", ""}};
    auto newer = newerRelease(feed, "0.1.0");
    ASSERT_TRUE(newer);
    EXPECT_EQ(newer->pageURL, "https://x/0.10");
    EXPECT_EQ(newerTitle(*newer), "Zephyrdock 0.10 is available");
    EXPECT_FALSE(newerRelease(feed, "0.10"));
    // A release without a display version shows its build version.
    EXPECT_EQ(newerRelease({{"7", "", ""}}, "6")->displayVersion, "7");
}

}  // namespace
}  // namespace zd::SoftwareUpdate
