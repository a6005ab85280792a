// The macOS backends' portable parts: bitmap bytes to and from zd::Image, and the kinds of
// property-list numbers.

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <limits>

#include "macos/PixelConversion.h"
#include "macos/PropertyListNumber.h"

namespace zd::mac {
namespace {

TEST(PixelConversion, ReadsBGRAPremultipliedRowsPastTheirPadding) {
    // Two pixels a row, rows padded to 12 bytes; the padding must not leak into the picture.
    const std::array<std::uint8_t, 24> bytes = {0x10, 0x20, 0x30, 0xff, 0x01, 0x02, 0x03, 0x80,
                                                0xee, 0xee, 0xee, 0xee, 0x00, 0x00, 0x00, 0x00,
                                                0x40, 0x00, 0x00, 0x40, 0xee, 0xee, 0xee, 0xee};
    auto image = imageFromBGRA(bytes, 2, 2, 12);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->pixel(0, 0), 0xff302010u);
    EXPECT_EQ(image->pixel(1, 0), 0x80030201u);
    EXPECT_EQ(image->pixel(0, 1), 0x00000000u);
    EXPECT_EQ(image->pixel(1, 1), 0x40000040u);
    EXPECT_EQ(bgraFromImage(*image),
              (std::vector<std::uint8_t>{0x10, 0x20, 0x30, 0xff, 0x01, 0x02, 0x03, 0x80, 0x00, 0x00,
                                         0x00, 0x00, 0x40, 0x00, 0x00, 0x40}));
}

TEST(PixelConversion, RefusesSizesTheBufferCantHold) {
    const std::array<std::uint8_t, 16> bytes{};
    EXPECT_TRUE(imageFromBGRA(bytes, 2, 2, 8));   // exactly enough
    EXPECT_FALSE(imageFromBGRA(bytes, 2, 3, 8));  // one row short
    EXPECT_FALSE(imageFromBGRA(bytes, 3, 1, 8));  // row shorter than the width
    EXPECT_FALSE(imageFromBGRA(bytes, 0, 2, 8));
    EXPECT_TRUE(bgraFromImage(Image()).empty());
}

TEST(PropertyListNumber, KindsAndValuesByTypeCode) {
    struct Case {
        const char* type;
        bool booleanObject;
        Value expected;
    };
    const std::uint64_t bigSpace = 0x8000000000000005ull;
    const Case cases[] = {
        {"c", true, Value(true)},  // the shared boolean object wins over its code
        {"c", false, Value(std::int64_t{7})},
        {"B", false, Value(true)},
        {"q", false, Value(std::int64_t{7})},
        {"Q", false, Value(bigSpace)},  // a desktop id above the signed range keeps its bits
        {"d", false, Value(7.5)},
        {"f", false, Value(7.5)},
        {"{CGPoint=dd}", false, Value(7.5)},
        {nullptr, false, Value(7.5)},
    };
    for (const Case& c : cases) {
        const std::uint64_t unsignedReading =
            c.type && std::string_view(c.type) == "Q" ? bigSpace : 7u;
        const Value value = valueOfNumber(numberKindOf(c.type, c.booleanObject), true, 7,
                                          unsignedReading, 7.5, c.type);
        EXPECT_EQ(value, c.expected) << (c.type ? c.type : "null");
    }
}

}  // namespace
}  // namespace zd::mac
