#pragma once
// One zlib stream compressed on several threads. The input comes in chunks, produced on the
// worker threads themselves (so producing a chunk — converting and filtering picture rows —
// runs in parallel too). Each chunk is compressed on its own by libdeflate's fastest level,
// reopened (see DeflateBlockShape) and joined in order into a single stream. Chunks don't see
// each other's bytes, which costs a percent or two of size against one stream.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace zd {

class ParallelZlibCompressor {
  public:
    // Input bytes per chunk to aim for: libdeflate's fastest level ends a block after about
    // this many bytes, so a chunk this size usually comes back as a single block.
    static constexpr std::size_t kChunkBytes = std::size_t{64} * 1024;

    // Fills `bytes` with chunk `index`'s input (resizing it as needed). Called on worker
    // threads, each chunk exactly once, in no particular order.
    using ChunkSource = std::function<void(std::size_t index, std::vector<std::uint8_t>& bytes)>;

    // Appends the zlib stream of all chunks' bytes, in index order, to `out`. False when
    // memory runs out or compression fails; `out` is then as it was.
    static bool compress(std::size_t chunkCount, const ChunkSource& source, int threads,
                         std::vector<std::uint8_t>& out);

    // The same stream as one libdeflate call at `level` (0…12) on this thread, the chunks
    // gathered first: for inputs too small to split, and for comparing levels.
    static bool compressAsOneStream(std::size_t chunkCount, const ChunkSource& source, int level,
                                    std::vector<std::uint8_t>& out);
};

}  // namespace zd
