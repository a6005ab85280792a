#pragma once
// Reads the shape of a raw deflate stream that libdeflate wrote for one piece of a larger
// input. libdeflate only writes whole streams: the last block is marked final and the stream
// ends somewhere inside its last byte. A stream made of exactly one block can be reopened —
// its final mark cleared and its exact length in bits found — so that more blocks can follow
// it. That is what lets pieces of one picture be compressed on several threads and joined
// into a single zlib stream.

#include <cstddef>
#include <cstdint>

namespace zd {

class DeflateBlockShape {
  public:
    enum class Kind {
        reopened,  // one Huffman block, now not final; `bits` is its exact length
        stored,    // one stored block: its bytes are the input, copied as they are
        other,     // several blocks, or an end that can't be told apart from padding
    };

    struct Result {
        Kind kind = Kind::other;
        std::size_t bits = 0;
    };

    // Inspects a complete raw deflate stream of `size` bytes. When the result is `reopened`,
    // the block's final mark has been cleared in place.
    static Result reopen(std::uint8_t* stream, std::size_t size);
};

}  // namespace zd
