#include "ParallelZlibCompressor.h"

#include <libdeflate.h>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <memory>
#include <new>
#include <system_error>
#include <thread>

#include "DeflateBlockShape.h"
#include "DeflateStreamWriter.h"
#include "LargeBuffers.h"

namespace zd {

namespace {

// libdeflate's fastest level: its blocks end at about kChunkBytes, which the chunking relies on.
constexpr int kLevel = 1;
// A piece that still isn't a single reopenable block at this size is stored as it is; only
// odd data (or a few hundred bytes at a picture's end) gets this far.
constexpr std::size_t kSmallestSplit = 4096;
// Below this many chunks, one stream on one thread is simpler and just as fast.
constexpr std::size_t kFewestChunksToSplit = 4;

struct CompressorDeleter {
    void operator()(libdeflate_compressor* c) const { libdeflate_free_compressor(c); }
};
using Compressor = std::unique_ptr<libdeflate_compressor, CompressorDeleter>;

Compressor makeCompressor(int level) {
    Compressor compressor(libdeflate_alloc_compressor(level));
    if (!compressor)
        throw std::bad_alloc();
    return compressor;
}

// Growable bytes that aren't zero-filled first: compressed output is written before it's read.
class ByteArena {
  public:
    // Room for `count` more bytes after the used ones.
    std::uint8_t* tail(std::size_t count) {
        if (size_ + count > capacity_) {
            const std::size_t capacity = std::max(size_ + count, capacity_ * 2);
            auto grown = LargeBuffers::bytes(capacity);
            if (!grown)
                throw std::bad_alloc();
            if (size_ > 0)
                std::memcpy(grown.get(), data_.get(), size_);
            data_ = std::move(grown);
            capacity_ = capacity;
        }
        return data_.get() + size_;
    }
    void commit(std::size_t count) { size_ += count; }
    std::size_t size() const { return size_; }
    const std::uint8_t* data() const { return data_.get(); }

  private:
    std::unique_ptr<std::uint8_t[]> data_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

// Part of a chunk's compressed form, in its worker's arena.
struct Piece {
    std::size_t offset = 0;
    std::size_t size = 0;  // bytes in the arena
    std::size_t bits = 0;  // the reopened blocks' exact length; 0 for a stored piece
};

struct ChunkResult {
    int worker = 0;
    std::vector<Piece> pieces;
    std::uint32_t adler = 1;
    std::size_t length = 0;
};

struct Worker {
    Compressor compressor = makeCompressor(kLevel);
    std::vector<std::uint8_t> input;
    ByteArena packed;
    std::size_t storedForWantOfABlock = 0;  // compressible bytes that had to be stored
};

// Compresses `size` bytes into reopened blocks, halving the range until libdeflate returns
// one block for each part.
void compressRange(Worker& worker, const std::uint8_t* data, std::size_t size,
                   std::vector<Piece>& pieces) {
    if (size == 0)
        return;
    const std::size_t bound = libdeflate_deflate_compress_bound(worker.compressor.get(), size);
    std::uint8_t* out = worker.packed.tail(std::max(bound, size));
    const std::size_t offset = worker.packed.size();
    const std::size_t written =
        libdeflate_deflate_compress(worker.compressor.get(), data, size, out, bound);
    const auto shape =
        written > 0 ? DeflateBlockShape::reopen(out, written) : DeflateBlockShape::Result{};
    if (shape.kind == DeflateBlockShape::Kind::reopened) {
        pieces.push_back({offset, written, shape.bits});
        worker.packed.commit(written);
        return;
    }
    if (shape.kind == DeflateBlockShape::Kind::stored || size <= kSmallestSplit) {
        if (shape.kind != DeflateBlockShape::Kind::stored)
            worker.storedForWantOfABlock += size;
        std::memcpy(out, data, size);
        pieces.push_back({offset, size, 0});
        worker.packed.commit(size);
        return;
    }
    const std::size_t half = size / 2;
    compressRange(worker, data, half, pieces);
    compressRange(worker, data + half, size - half, pieces);
}

// zlib's rule for the Adler-32 of two runs of bytes from the checksums of each.
std::uint32_t combineAdler32(std::uint32_t first, std::uint32_t second, std::size_t secondLength) {
    constexpr std::uint64_t kBase = 65521;
    const std::uint64_t rem = secondLength % kBase;
    std::uint64_t sum1 = first & 0xffffu;
    std::uint64_t sum2 = (rem * sum1) % kBase;
    sum1 += (second & 0xffffu) + kBase - 1;
    sum2 += ((first >> 16) & 0xffffu) + ((second >> 16) & 0xffffu) + kBase - rem;
    if (sum1 >= kBase)
        sum1 -= kBase;
    if (sum1 >= kBase)
        sum1 -= kBase;
    if (sum2 >= kBase * 2)
        sum2 -= kBase * 2;
    if (sum2 >= kBase)
        sum2 -= kBase;
    return static_cast<std::uint32_t>(sum1 | (sum2 << 16));
}

void putBigEndian32(std::uint8_t* p, std::uint32_t v) {
    p[0] = static_cast<std::uint8_t>(v >> 24);
    p[1] = static_cast<std::uint8_t>(v >> 16);
    p[2] = static_cast<std::uint8_t>(v >> 8);
    p[3] = static_cast<std::uint8_t>(v);
}

// zlib header: deflate with a 32 KiB window, "fastest" level hint, check bits.
constexpr std::uint8_t kZlibHeader[2] = {0x78, 0x01};

}  // namespace

bool ParallelZlibCompressor::compressAsOneStream(std::size_t chunkCount, const ChunkSource& source,
                                                 int level, std::vector<std::uint8_t>& out) {
    const std::size_t start = out.size();
    try {
        std::vector<std::uint8_t> all;
        std::vector<std::uint8_t> chunk;
        for (std::size_t i = 0; i < chunkCount; ++i) {
            source(i, chunk);
            if (i == 0)
                all.reserve(chunk.size() * chunkCount);
            all.insert(all.end(), chunk.begin(), chunk.end());
        }
        const Compressor compressor = makeCompressor(std::clamp(level, 0, 12));
        const std::size_t bound = libdeflate_zlib_compress_bound(compressor.get(), all.size());
        out.resize(start + bound);
        const std::size_t written = libdeflate_zlib_compress(compressor.get(), all.data(),
                                                             all.size(), out.data() + start, bound);
        out.resize(written > 0 ? start + written : start);
        return written > 0;
    } catch (const std::bad_alloc&) {
        out.resize(start);
        return false;
    }
}

bool ParallelZlibCompressor::compress(std::size_t chunkCount, const ChunkSource& source,
                                      int threads, std::vector<std::uint8_t>& out) {
    const std::size_t start = out.size();
    try {
        if (chunkCount < kFewestChunksToSplit)
            return compressAsOneStream(chunkCount, source, kLevel, out);

        const std::size_t workerCount =
            std::min(static_cast<std::size_t>(std::max(threads, 1)), chunkCount);
        std::vector<Worker> workers(workerCount);
        std::vector<ChunkResult> results(chunkCount);
        std::atomic<std::size_t> next{0};
        std::atomic<bool> failed{false};
        const auto work = [&](int id) {
            try {
                Worker& worker = workers[static_cast<std::size_t>(id)];
                for (std::size_t i = next++; i < chunkCount && !failed; i = next++) {
                    source(i, worker.input);
                    ChunkResult& result = results[i];
                    result.worker = id;
                    result.length = worker.input.size();
                    result.adler = libdeflate_adler32(1, worker.input.data(), worker.input.size());
                    compressRange(worker, worker.input.data(), worker.input.size(), result.pieces);
                }
            } catch (...) {
                failed = true;
            }
        };
        std::vector<std::thread> helpers;
        for (std::size_t id = 1; id < workerCount; ++id) {
            try {
                helpers.emplace_back(work, static_cast<int>(id));
            } catch (const std::system_error&) {
                break;  // no more threads to be had: the others share the work
            }
        }
        work(0);
        for (std::thread& helper : helpers)
            helper.join();
        if (failed)
            return false;
        // Data that libdeflate keeps answering with fixed-code blocks (long runs in small
        // chunks), or a libdeflate whose blocks don't fall as expected: one stream keeps the
        // picture small.
        std::size_t input = 0;
        std::size_t stored = 0;
        for (const ChunkResult& result : results)
            input += result.length;
        for (const Worker& worker : workers)
            stored += worker.storedForWantOfABlock;
        if (stored > input / 8)
            return compressAsOneStream(chunkCount, source, kLevel, out);

        std::size_t bound = sizeof kZlibHeader + DeflateStreamWriter::kFinishBound + 4;
        for (const ChunkResult& result : results)
            for (const Piece& piece : result.pieces)
                bound += piece.bits > 0 ? piece.size : DeflateStreamWriter::storedBound(piece.size);
        out.resize(start + bound);
        std::memcpy(out.data() + start, kZlibHeader, sizeof kZlibHeader);
        DeflateStreamWriter writer(out.data() + start + sizeof kZlibHeader);
        std::uint32_t adler = 1;
        for (const ChunkResult& result : results) {
            const ByteArena& arena = workers[static_cast<std::size_t>(result.worker)].packed;
            for (const Piece& piece : result.pieces) {
                if (piece.bits > 0)
                    writer.appendBlocks(arena.data() + piece.offset, piece.bits);
                else
                    writer.appendStored(arena.data() + piece.offset, piece.size);
            }
            adler = combineAdler32(adler, result.adler, result.length);
        }
        const std::size_t streamEnd = start + sizeof kZlibHeader + writer.finish();
        putBigEndian32(out.data() + streamEnd, adler);
        out.resize(streamEnd + 4);
        return true;
    } catch (const std::bad_alloc&) {
        out.resize(start);
        return false;
    }
}

}  // namespace zd
