#pragma once
// Joins deflate blocks into one stream, bit by bit: reopened blocks (whose lengths are known
// to the bit) are shifted into place, stored blocks are written afresh since their padding
// depends on where they start, and an empty final block closes the stream.

#include <cstddef>
#include <cstdint>

namespace zd {

class DeflateStreamWriter {
  public:
    // Writes into `out`, which must have room for everything appended (see bound helpers).
    explicit DeflateStreamWriter(std::uint8_t* out) : out_(out) {}

    // Bytes a stored copy of `size` bytes takes at most.
    static std::size_t storedBound(std::size_t size) { return size + 5 * (size / 65535 + 1) + 1; }
    // Bytes the closing block and the last partial byte take at most.
    static constexpr std::size_t kFinishBound = 3;

    // Appends `bits` bits of non-final blocks, packed from bit 0 of `blocks[0]`.
    void appendBlocks(const std::uint8_t* blocks, std::size_t bits);
    // Appends `size` bytes as non-final stored blocks.
    void appendStored(const std::uint8_t* data, std::size_t size);
    // Closes the stream with an empty final block; returns the stream's length in bytes.
    std::size_t finish();

  private:
    void putBits(std::uint32_t value, int count);
    void alignToByte();

    std::uint8_t* out_;
    std::size_t written_ = 0;    // whole bytes in out_
    std::uint32_t pending_ = 0;  // bits not yet written, least significant first
    int pendingCount_ = 0;       // always below 8 between calls
};

}  // namespace zd
