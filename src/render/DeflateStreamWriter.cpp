#include "DeflateStreamWriter.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace zd {

static_assert(std::endian::native == std::endian::little, "words are shifted as little-endian");

void DeflateStreamWriter::putBits(std::uint32_t value, int count) {
    pending_ |= value << pendingCount_;
    pendingCount_ += count;
    while (pendingCount_ >= 8) {
        out_[written_++] = static_cast<std::uint8_t>(pending_);
        pending_ >>= 8;
        pendingCount_ -= 8;
    }
}

void DeflateStreamWriter::alignToByte() {
    if (pendingCount_ > 0)
        putBits(0, 8 - pendingCount_);
}

void DeflateStreamWriter::appendBlocks(const std::uint8_t* blocks, std::size_t bits) {
    const std::size_t whole = bits / 8;
    const int rest = static_cast<int>(bits % 8);
    if (pendingCount_ == 0) {
        std::memcpy(out_ + written_, blocks, whole);
        written_ += whole;
    } else {
        // Each output byte takes the pending bits below and the next input byte's low bits
        // above them.
        const int shift = pendingCount_;
        std::uint64_t carry = pending_;
        std::uint8_t* out = out_ + written_;
        std::size_t i = 0;
        // Eight bytes at a time (deflate streams are little-endian, like the machines we run
        // on), then byte by byte.
        for (; i + 8 <= whole; i += 8) {
            std::uint64_t word = 0;
            std::memcpy(&word, blocks + i, 8);
            const std::uint64_t shifted = carry | (word << shift);
            std::memcpy(out + i, &shifted, 8);
            carry = word >> (64 - shift);
        }
        for (; i < whole; ++i) {
            const std::uint64_t b = blocks[i];
            out[i] = static_cast<std::uint8_t>(carry | (b << shift));
            carry = b >> (8 - shift);
        }
        written_ += whole;
        pending_ = static_cast<std::uint32_t>(carry);
    }
    if (rest > 0)
        putBits(blocks[whole] & ((1u << rest) - 1u), rest);
}

void DeflateStreamWriter::appendStored(const std::uint8_t* data, std::size_t size) {
    while (size > 0) {
        const std::size_t length = std::min<std::size_t>(size, 65535);
        putBits(0, 3);  // not final, stored
        alignToByte();
        out_[written_++] = static_cast<std::uint8_t>(length);
        out_[written_++] = static_cast<std::uint8_t>(length >> 8);
        out_[written_++] = static_cast<std::uint8_t>(~length);
        out_[written_++] = static_cast<std::uint8_t>(~length >> 8);
        if (length > 0)
            std::memcpy(out_ + written_, data, length);
        written_ += length;
        data += length;
        size -= length;
    }
}

std::size_t DeflateStreamWriter::finish() {
    putBits(1, 1);  // final
    putBits(1, 2);  // fixed codes
    putBits(0, 7);  // end of block, whose fixed codeword is seven zero bits
    alignToByte();
    return written_;
}

}  // namespace zd
