#include "DeflateBlockShape.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "DeflateCheck.h"
#include "DeflateStreamWriter.h"

namespace zd {
namespace {

using test::Bytes;

// Text-like bytes: compressible, with enough variety for a dynamic Huffman block.
Bytes textLike(std::size_t size, unsigned seed) {
    std::mt19937 rng(seed);
    static const char* words[] = {"window ", "shadow ", "menu ",   "bar ", "light ",
                                  "dark ",   "canvas ", "zephyr ", "x",    "\n"};
    Bytes out;
    while (out.size() < size) {
        const char* w = words[rng() % 10];
        while (*w != 0 && out.size() < size)
            out.push_back(static_cast<std::uint8_t>(*w++));
    }
    return out;
}

Bytes noise(std::size_t size, unsigned seed) {
    std::mt19937 rng(seed);
    Bytes out(size);
    for (auto& b : out)
        b = static_cast<std::uint8_t>(rng());
    return out;
}

Bytes rawDeflate(const Bytes& input) {
    return test::deflateWhole(input, test::StreamFormat::raw);
}

TEST(DeflateBlockShape, ReopensOneDynamicBlockAndFindsItsExactEnd) {
    // Stitch reopened blocks behind prefixes of 0…7 bits (stored blocks of 0 to 7 bytes leave
    // different offsets after their 3 header bits are followed by reopened blocks), and the
    // result must inflate to the concatenated inputs.
    // Many seeds, so that end-of-block codewords of many lengths and shapes come up.
    for (unsigned seed = 1; seed <= 160; ++seed) {
        Bytes a = textLike(3000 + seed * 317, seed);
        const Bytes b = textLike(1500 + seed * 97, seed + 1000);
        const Bytes sprinkle = noise(seed % 40, seed);
        for (std::size_t i = 0; i < sprinkle.size(); ++i)
            a[(i * 7919) % a.size()] = sprinkle[i];
        Bytes sa = rawDeflate(a);
        Bytes sb = rawDeflate(b);
        const auto shapeA = DeflateBlockShape::reopen(sa.data(), sa.size());
        const auto shapeB = DeflateBlockShape::reopen(sb.data(), sb.size());
        ASSERT_EQ(shapeA.kind, DeflateBlockShape::Kind::reopened) << seed;
        ASSERT_EQ(shapeB.kind, DeflateBlockShape::Kind::reopened) << seed;
        EXPECT_GT(shapeA.bits, (sa.size() - 1) * 8);
        EXPECT_LE(shapeA.bits, sa.size() * 8);
        EXPECT_EQ(sa[0] & 1, 0) << "no longer final";

        Bytes stream(2 * sa.size() + sb.size() + 64);
        DeflateStreamWriter writer(stream.data());
        writer.appendBlocks(sa.data(), shapeA.bits);
        const Bytes between = textLike(seed % 8, seed);
        writer.appendStored(between.data(), between.size());
        writer.appendBlocks(sb.data(), shapeB.bits);
        writer.appendBlocks(sa.data(), shapeA.bits);
        stream.resize(writer.finish());

        Bytes expected = a;
        expected.insert(expected.end(), between.begin(), between.end());
        expected.insert(expected.end(), b.begin(), b.end());
        expected.insert(expected.end(), a.begin(), a.end());
        const auto inflated =
            test::inflateExactly(stream, test::StreamFormat::raw, expected.size());
        ASSERT_TRUE(inflated.has_value()) << "seed " << seed;
        EXPECT_EQ(*inflated, expected) << "seed " << seed;
    }
}

TEST(DeflateBlockShape, TellsStoredAndUnusableStreamsApart) {
    // Noise doesn't compress: libdeflate stores it.
    Bytes stored = rawDeflate(noise(5000, 7));
    EXPECT_EQ(DeflateBlockShape::reopen(stored.data(), stored.size()).kind,
              DeflateBlockShape::Kind::stored);

    // A few bytes get fixed codes, whose end-of-block codeword is all zeros.
    const Bytes tinyInput(64, 'a');
    Bytes tiny = rawDeflate(tinyInput);
    ASSERT_EQ((tiny[0] >> 1) & 3, 1) << "fixed codes";
    EXPECT_EQ(DeflateBlockShape::reopen(tiny.data(), tiny.size()).kind,
              DeflateBlockShape::Kind::other);

    // Much more than one block's worth: several blocks, the first not final.
    Bytes several = rawDeflate(textLike(600000, 3));
    ASSERT_EQ(several[0] & 1, 0);
    EXPECT_EQ(DeflateBlockShape::reopen(several.data(), several.size()).kind,
              DeflateBlockShape::Kind::other);

    // Truncated or damaged headers are refused, never read past the end.
    Bytes good = rawDeflate(textLike(4000, 9));
    for (std::size_t cut : {1, 2, 5, 12}) {
        Bytes truncated(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(cut));
        EXPECT_EQ(DeflateBlockShape::reopen(truncated.data(), truncated.size()).kind,
                  DeflateBlockShape::Kind::other)
            << cut;
    }
}

}  // namespace
}  // namespace zd
