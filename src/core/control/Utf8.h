#pragma once
// Whether a tool's output is text: both control tools' outputs count as nothing when their
// bytes aren't valid UTF-8.

#include <cstddef>
#include <string_view>

namespace zd {

// Structural UTF-8 check: lead and continuation bytes, no overlong two-byte forms.
inline bool isValidUtf8(std::string_view bytes) {
    std::size_t i = 0;
    while (i < bytes.size()) {
        const auto c = static_cast<unsigned char>(bytes[i]);
        std::size_t extra = 0;
        if (c < 0x80) {
            extra = 0;
        } else if (c >= 0xc2 && c <= 0xdf) {
            extra = 1;
        } else if (c >= 0xe0 && c <= 0xef) {
            extra = 2;
        } else if (c >= 0xf0 && c <= 0xf4) {
            extra = 3;
        } else {
            return false;
        }
        if (i + extra >= bytes.size())
            return false;
        for (std::size_t k = 1; k <= extra; ++k) {
            if ((static_cast<unsigned char>(bytes[i + k]) & 0xc0) != 0x80)
                return false;
        }
        i += extra + 1;
    }
    return true;
}

}  // namespace zd
