// The value types' own rules: the canvas a size resolves to, the background picture, identity
// and raw values.
#include <gtest/gtest.h>

#include "model/AppearanceMode.h"
#include "model/BackgroundChoice.h"
#include "model/CaptureTarget.h"
#include "model/OutputSize.h"
#include "testing/FakeImageCodec.h"
#include "testing/FakeScreenBackend.h"

namespace zd {
namespace {

TEST(DomainModel, ResolvedCanvasSizes) {
    testing::FakeScreenBackend none;
    testing::FakeScreenBackend retina;
    retina.main = ScreenInfo{{0, 0, 1512, 982}, {0, 0, 1512, 944}, 2.0};
    struct Case {
        OutputSize size;
        int width, height;
        const ScreenBackend& screens;
        Size expected;
    };
    for (const auto& c : {Case{OutputSize::mas1280, 5, 5, retina, {1280, 800}},
                          Case{OutputSize::custom, 1920, 1200, none, {1920, 1200}},
                          Case{OutputSize::custom, 0, -7, none, {1, 1}},
                          Case{OutputSize::current, 0, 0, none, {2880, 1800}},
                          Case{OutputSize::current, 0, 0, retina, {3024, 1964}}}) {
        const Size size = resolvedSize(c.size, c.width, c.height, c.screens);
        EXPECT_EQ(size.width, c.expected.width) << rawString(c.size);
        EXPECT_EQ(size.height, c.expected.height) << rawString(c.size);
    }
}

TEST(DomainModel, BackgroundPictureOnlyForKindImageWithAReadableFile) {
    FakeImageCodec codec;
    codec.files["/pics/a.jpg"] = Image(3, 2);
    struct Case {
        BackgroundKind kind;
        std::optional<std::string> url;
        bool picture;
    };
    for (const auto& c : {Case{BackgroundKind::image, "/pics/a.jpg", true},
                          Case{BackgroundKind::color, "/pics/a.jpg", false},
                          Case{BackgroundKind::transparent, "/pics/a.jpg", false},
                          Case{BackgroundKind::image, "/pics/gone.jpg", false},
                          Case{BackgroundKind::image, std::nullopt, false}}) {
        const BackgroundChoice choice{c.kind, c.url, Color::white(1.0)};
        EXPECT_EQ(choice.image(codec).has_value(), c.picture) << c.url.value_or("no url");
    }
}

TEST(DomainModel, TargetsAreTheirWindowAndRawValuesAreExact) {
    EXPECT_EQ((CaptureTarget{7, "Notes", "A", 1, {}, {}}),
              (CaptureTarget{7, "Mail", "B", 2, {}, {}}));
    EXPECT_NE((CaptureTarget{7, "Notes", "A", 1, {}, {}}),
              (CaptureTarget{8, "Notes", "A", 1, {}, {}}));
    EXPECT_EQ(fromRawValue<AppearanceMode>("light"), AppearanceMode::light);
    EXPECT_FALSE(fromRawValue<AppearanceMode>("Light"));
}

}  // namespace
}  // namespace zd
