#pragma once
// libdeflate as the reference the tests hold compressed streams against.

#include <libdeflate.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace zd::test {

using Bytes = std::vector<std::uint8_t>;

enum class StreamFormat { raw, zlib };

// Compresses `input` in one stream, as libdeflate alone would.
inline Bytes deflateWhole(const Bytes& input, StreamFormat format, int level = 1) {
    const std::unique_ptr<libdeflate_compressor, decltype(&libdeflate_free_compressor)> c(
        libdeflate_alloc_compressor(level), &libdeflate_free_compressor);
    const bool raw = format == StreamFormat::raw;
    Bytes out(raw ? libdeflate_deflate_compress_bound(c.get(), input.size())
                  : libdeflate_zlib_compress_bound(c.get(), input.size()));
    out.resize(raw ? libdeflate_deflate_compress(c.get(), input.data(), input.size(), out.data(),
                                                 out.size())
                   : libdeflate_zlib_compress(c.get(), input.data(), input.size(), out.data(),
                                              out.size()));
    return out;
}

// Inflates a stream that must hold exactly `expected` bytes and end exactly at its last byte;
// a zlib stream's checksum is checked too.
inline std::optional<Bytes> inflateExactly(const Bytes& stream, StreamFormat format,
                                           std::size_t expected) {
    const std::unique_ptr<libdeflate_decompressor, decltype(&libdeflate_free_decompressor)> d(
        libdeflate_alloc_decompressor(), &libdeflate_free_decompressor);
    Bytes out(expected);
    std::size_t in = 0;
    std::size_t produced = 0;
    const auto result =
        format == StreamFormat::raw
            ? libdeflate_deflate_decompress_ex(d.get(), stream.data(), stream.size(), out.data(),
                                               out.size(), &in, &produced)
            : libdeflate_zlib_decompress_ex(d.get(), stream.data(), stream.size(), out.data(),
                                            out.size(), &in, &produced);
    if (result != LIBDEFLATE_SUCCESS || in != stream.size() || produced != expected)
        return std::nullopt;
    return out;
}

}  // namespace zd::test
