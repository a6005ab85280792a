#include "DeflateBlockShape.h"

#include <array>
#include <optional>

namespace zd {

namespace {

constexpr int kMaxCodeLength = 15;

// Reads bits least significant first, as deflate packs them; reading past the end fails.
class BitReader {
  public:
    BitReader(const std::uint8_t* data, std::size_t size) : data_(data), bits_(size * 8) {}

    std::optional<std::uint32_t> take(int count) {
        if (position_ + static_cast<std::size_t>(count) > bits_)
            return std::nullopt;
        std::uint32_t value = 0;
        for (int i = 0; i < count; ++i, ++position_)
            value |= static_cast<std::uint32_t>((data_[position_ / 8] >> (position_ % 8)) & 1u)
                     << i;
        return value;
    }

  private:
    const std::uint8_t* data_;
    std::size_t bits_;
    std::size_t position_ = 0;
};

// A canonical Huffman code given by its code lengths, decoded one bit at a time: the block
// header is a few hundred bits, so speed doesn't matter here.
class CanonicalCode {
  public:
    template <std::size_t N>
    explicit CanonicalCode(const std::array<std::uint8_t, N>& lengths, std::size_t used) {
        for (std::size_t s = 0; s < used; ++s)
            ++count_[lengths[s]];
        std::array<int, kMaxCodeLength + 2> offset{};
        for (int len = 1; len <= kMaxCodeLength; ++len)
            offset[len + 1] = offset[len] + count_[len];
        for (std::size_t s = 0; s < used; ++s)
            if (lengths[s] != 0)
                symbols_[offset[lengths[s]]++] = static_cast<int>(s);
    }

    std::optional<int> decode(BitReader& reader) const {
        int code = 0;
        int first = 0;
        int index = 0;
        for (int len = 1; len <= kMaxCodeLength; ++len) {
            const auto bit = reader.take(1);
            if (!bit)
                return std::nullopt;
            code |= static_cast<int>(*bit);
            const int count = count_[len];
            if (code - count < first)
                return symbols_[index + (code - first)];
            index += count;
            first = (first + count) << 1;
            code <<= 1;
        }
        return std::nullopt;
    }

  private:
    std::array<int, kMaxCodeLength + 1> count_{};
    std::array<int, 320> symbols_{};
};

struct Codeword {
    std::uint32_t value = 0;  // most significant bit is sent first
    int length = 0;
};

// The end-of-block codeword of the dynamic block whose header starts at bit 3.
std::optional<Codeword> endOfBlockCode(BitReader& reader) {
    const auto hlit = reader.take(5);
    const auto hdist = reader.take(5);
    const auto hclen = reader.take(4);
    if (!hlit || !hdist || !hclen)
        return std::nullopt;
    const std::size_t literalCount = *hlit + 257;
    const std::size_t distanceCount = *hdist + 1;
    if (literalCount > 286 || distanceCount > 30)
        return std::nullopt;

    static constexpr std::array<int, 19> kOrder = {16, 17, 18, 0, 8,  7, 9,  6, 10, 5,
                                                   11, 4,  12, 3, 13, 2, 14, 1, 15};
    std::array<std::uint8_t, 19> lengthCodeLengths{};
    for (std::uint32_t i = 0; i < *hclen + 4; ++i) {
        const auto len = reader.take(3);
        if (!len)
            return std::nullopt;
        lengthCodeLengths[static_cast<std::size_t>(kOrder[i])] = static_cast<std::uint8_t>(*len);
    }
    const CanonicalCode lengthCode(lengthCodeLengths, lengthCodeLengths.size());

    std::array<std::uint8_t, 320> lengths{};
    std::size_t filled = 0;
    while (filled < literalCount + distanceCount) {
        const auto symbol = lengthCode.decode(reader);
        if (!symbol)
            return std::nullopt;
        std::uint8_t value = 0;
        std::optional<std::uint32_t> repeat;
        if (*symbol < 16) {
            lengths[filled++] = static_cast<std::uint8_t>(*symbol);
            continue;
        }
        if (*symbol == 16) {
            if (filled == 0)
                return std::nullopt;
            value = lengths[filled - 1];
            repeat = reader.take(2);
            if (repeat)
                *repeat += 3;
        } else if (*symbol == 17) {
            repeat = reader.take(3);
            if (repeat)
                *repeat += 3;
        } else {
            repeat = reader.take(7);
            if (repeat)
                *repeat += 11;
        }
        if (!repeat || filled + *repeat > literalCount + distanceCount)
            return std::nullopt;
        for (std::uint32_t i = 0; i < *repeat; ++i)
            lengths[filled++] = value;
    }

    // Canonical codes: shorter codes first, and in symbol order within one length.
    constexpr std::size_t kEndOfBlock = 256;
    const int endLength = lengths[kEndOfBlock];
    if (endLength == 0)
        return std::nullopt;
    std::array<std::uint32_t, kMaxCodeLength + 1> count{};
    for (std::size_t s = 0; s < literalCount; ++s)
        ++count[lengths[s]];
    std::uint32_t code = 0;
    count[0] = 0;
    for (int len = 1; len <= endLength; ++len)
        code = (code + count[static_cast<std::size_t>(len - 1)]) << 1;
    for (std::size_t s = 0; s < kEndOfBlock; ++s)
        if (lengths[s] == endLength)
            ++code;
    return Codeword{code, endLength};
}

bool bitAt(const std::uint8_t* data, std::size_t bit) {
    return ((data[bit / 8] >> (bit % 8)) & 1u) != 0;
}

}  // namespace

DeflateBlockShape::Result DeflateBlockShape::reopen(std::uint8_t* stream, std::size_t size) {
    if (size < 2 || (stream[0] & 1u) == 0)
        return {};  // the first block isn't the last: there are several
    const int type = (stream[0] >> 1) & 3;
    if (type == 0) {
        // Header bits, padding to the byte, then LEN and its complement, then the bytes.
        const std::size_t length = stream[1] | (static_cast<std::size_t>(stream[2]) << 8);
        if (size == 5 + length)
            return {Kind::stored, 0};
        return {};
    }
    if (type != 2)
        return {};  // a fixed-code block ends in seven zero bits: no way to find its end

    BitReader reader(stream, size);
    reader.take(3);
    const auto end = endOfBlockCode(reader);
    // An all-zero codeword can't be told apart from the zero padding after it.
    if (!end || end->value == 0)
        return {};

    // Nothing but zero padding follows the end-of-block codeword, so the last bit set is the
    // codeword's last one bit; the codeword's trailing zero bits come after it.
    std::size_t lastSet = size * 8;
    while (lastSet > 0 && !bitAt(stream, lastSet - 1))
        --lastSet;
    const auto trailingZeros = static_cast<std::size_t>(__builtin_ctz(end->value));
    const std::size_t bits = lastSet + trailingZeros;
    const auto codeLength = static_cast<std::size_t>(end->length);
    if (bits > size * 8 || bits <= (size - 1) * 8 || bits < 3 + codeLength)
        return {};
    for (std::size_t i = 0; i < codeLength; ++i) {
        const bool sent = ((end->value >> (codeLength - 1 - i)) & 1u) != 0;
        if (bitAt(stream, bits - codeLength + i) != sent)
            return {};
    }
    stream[0] &= static_cast<std::uint8_t>(~1u);
    return {Kind::reopened, bits};
}

}  // namespace zd
