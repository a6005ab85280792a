// Whether a window followed the switch to Dark: the comparison of its two captures, and what
// the run says when it didn't.

#include "../run/RunFixture.h"
#include "control/AppearanceFollow.h"

namespace zd::testing {
namespace {

// A 100 × 10 picture of one grey with `changed` pixels set to another.
Image picture(std::uint32_t grey, int changed = 0, std::uint32_t other = 0xff000000u) {
    Image image(100, 10);
    auto pixels = image.mutablePixels();
    for (std::size_t i = 0; i < pixels.size(); ++i)
        pixels[i] = static_cast<int>(i) < changed ? other : grey;
    return image;
}

TEST(AppearanceFollow, SameWindowDespiteACaretButNotAcrossAThemeOrASize) {
    const Image light = picture(0xfff0f0f0u);
    EXPECT_TRUE(AppearanceFollow::looksSame(light, light));
    EXPECT_TRUE(AppearanceFollow::looksSame(light, picture(0xffe0e0e0u)));      // within 24
    EXPECT_TRUE(AppearanceFollow::looksSame(light, picture(0xfff0f0f0u, 10)));  // a caret: 1 %
    EXPECT_FALSE(AppearanceFollow::looksSame(light, picture(0xfff0f0f0u, 11)));
    EXPECT_FALSE(AppearanceFollow::looksSame(light, picture(0xff303030u)));
    EXPECT_FALSE(AppearanceFollow::looksSame(light, Image(100, 11)));
    EXPECT_FALSE(AppearanceFollow::looksSame(Image(), Image()));
}

TEST_F(RunFixture, AWindowThatStaysLightIsNamedWhenSavedAndAtOnce) {
    services.targetFollowsAppearance = false;
    runToEnd();
    EXPECT_EQ(view->progress.statusMessage(), "Saved 4 shots to " + services.savedRoot +
                                                  ". Notes did not follow the switch to Dark.");
    EXPECT_EQ(only({"status: Notes did not"}).size(), 2u);  // once for each language
    EXPECT_EQ(services.savedShots.size(), 4u);

    // A run whose window follows says nothing of it; nor does a run of one appearance.
    services.targetFollowsAppearance = true;
    runToEnd();
    EXPECT_EQ(view->progress.statusMessage(), "Saved 4 shots to " + services.savedRoot + ".");
    services.targetFollowsAppearance = false;
    view->enabledAppearances = {AppearanceMode::light};
    runToEnd();
    EXPECT_EQ(view->progress.statusMessage(), "Saved 2 shots to " + services.savedRoot + ".");
}

}  // namespace
}  // namespace zd::testing
