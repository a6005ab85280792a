#include "ParallelZlibCompressor.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "DeflateCheck.h"

namespace zd {
namespace {

using test::Bytes;

// Chunks of every kind a picture has: flat runs, smooth gradients, noise, short repeats, and
// chunk sizes from empty to several blocks' worth.
void chunkBytes(std::size_t index, Bytes& out) {
    std::mt19937 rng(static_cast<unsigned>(index * 7919 + 1));
    const std::size_t sizes[] = {ParallelZlibCompressor::kChunkBytes,    1, 0, 300000, 5000,
                                 ParallelZlibCompressor::kChunkBytes - 3};
    out.assign(sizes[index % 6], 0);
    for (std::size_t i = 0; i < out.size(); ++i) {
        switch (index % 5) {
            case 0:
                out[i] = 0;
                break;
            case 1:
                out[i] = static_cast<std::uint8_t>(i / 97 + (rng() % 3));
                break;
            case 2:
                out[i] = static_cast<std::uint8_t>(rng());
                break;
            case 3:
                out[i] = static_cast<std::uint8_t>("shadow menu bar "[i % 16]);
                break;
            default:
                out[i] = static_cast<std::uint8_t>((rng() % 5 == 0) ? rng() : i % 7);
                break;
        }
    }
}

Bytes compress(std::size_t chunks, int threads) {
    Bytes out = {0xaa, 0xbb};  // appended after what's there
    EXPECT_TRUE(ParallelZlibCompressor::compress(chunks, chunkBytes, threads, out));
    EXPECT_EQ(out[0], 0xaa);
    EXPECT_EQ(out[1], 0xbb);
    return Bytes(out.begin() + 2, out.end());
}

// What `source` gives for `chunks` chunks, one after the other.
Bytes inputOf(std::size_t chunks, const ParallelZlibCompressor::ChunkSource& source) {
    Bytes all;
    for (std::size_t i = 0; i < chunks; ++i) {
        Bytes c;
        source(i, c);
        all.insert(all.end(), c.begin(), c.end());
    }
    return all;
}

std::optional<Bytes> inflate(const Bytes& zlib, std::size_t expected) {
    return test::inflateExactly(zlib, test::StreamFormat::zlib, expected);
}

TEST(ParallelZlibCompressor, JoinsChunksOfEveryKindIntoOneValidStreamWhateverTheThreads) {
    for (std::size_t chunks : {0, 1, 3, 4, 17, 40}) {
        const Bytes input = inputOf(chunks, chunkBytes);
        const Bytes zlib = compress(chunks, 2);
        const auto inflated = inflate(zlib, input.size());
        ASSERT_TRUE(inflated.has_value()) << chunks << " chunks";
        EXPECT_EQ(*inflated, input) << chunks << " chunks";
        EXPECT_EQ(compress(chunks, chunks % 2 == 0 ? 1 : 5), zlib) << chunks << " chunks";
    }
}

TEST(ParallelZlibCompressor, StaysCloseToOneStreamOnCompressibleData) {
    // Chunks don't share history, and each starts a block: that may cost a few percent. Small
    // chunks of long runs get fixed-code blocks from libdeflate, which can't be reopened, and
    // storing every such chunk would make the stream as big as its input.
    const ParallelZlibCompressor::ChunkSource textured = [](std::size_t i, Bytes& bytes) {
        std::mt19937 rng(static_cast<unsigned>(i));
        bytes.resize(ParallelZlibCompressor::kChunkBytes - 1000);
        for (std::size_t k = 0; k < bytes.size(); ++k)
            bytes[k] = static_cast<std::uint8_t>(k % 251 < 40 ? rng() % 16 : (k / 13) % 9);
    };
    const ParallelZlibCompressor::ChunkSource runs = [](std::size_t, Bytes& bytes) {
        bytes.assign(2000, 'a');
    };
    for (const auto& [chunks, source] : {std::pair{std::size_t{24}, textured}, {12, runs}}) {
        const Bytes input = inputOf(chunks, source);
        Bytes joined;
        ASSERT_TRUE(ParallelZlibCompressor::compress(chunks, source, 2, joined));
        const Bytes whole = test::deflateWhole(input, test::StreamFormat::zlib);
        EXPECT_LT(static_cast<double>(joined.size()),
                  1.03 * static_cast<double>(whole.size()) + 40.0 * static_cast<double>(chunks))
            << chunks << " chunks: " << whole.size();
        EXPECT_TRUE(inflate(joined, input.size()).has_value());
    }
}

TEST(ParallelZlibCompressor, RunningOutOfMemoryLeavesTheOutputAsItWas) {
    Bytes out = {1, 2, 3};
    const bool done = ParallelZlibCompressor::compress(
        8,
        [](std::size_t i, Bytes& bytes) {
            if (i == 5)
                throw std::bad_alloc();
            bytes.assign(1000, 7);
        },
        2, out);
    EXPECT_FALSE(done);
    EXPECT_EQ(out, (Bytes{1, 2, 3}));
}

}  // namespace
}  // namespace zd
