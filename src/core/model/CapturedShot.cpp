#include "model/CapturedShot.h"

#include <array>
#include <cstdio>
#include <random>

namespace zd {

std::string makeUUID() {
    thread_local std::mt19937_64 engine{std::random_device{}()};
    std::array<unsigned char, 16> bytes{};
    for (std::size_t i = 0; i < bytes.size(); i += 8) {
        auto word = engine();
        for (std::size_t j = 0; j < 8; ++j) bytes[i + j] = static_cast<unsigned char>(word >> (8 * j));
    }
    bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0fu) | 0x40u);
    bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3fu) | 0x80u);
    std::string out;
    char hex[3];
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10) out += '-';
        std::snprintf(hex, sizeof hex, "%02X", bytes[i]);
        out += hex;
    }
    return out;
}

}  // namespace zd
