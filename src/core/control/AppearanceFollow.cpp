#include "control/AppearanceFollow.h"

#include <cstdlib>

namespace zd::AppearanceFollow {

namespace {

bool changed(std::uint32_t a, std::uint32_t b) {
    for (int shift = 0; shift < 32; shift += 8) {
        const int difference =
            static_cast<int>((a >> shift) & 0xffu) - static_cast<int>((b >> shift) & 0xffu);
        if (std::abs(difference) > channelTolerance)
            return true;
    }
    return false;
}

}  // namespace

bool looksSame(const Image& light, const Image& dark) {
    if (light.isNull() || dark.isNull() || light.width() != dark.width() ||
        light.height() != dark.height()) {
        return false;
    }
    const auto a = light.pixels();
    const auto b = dark.pixels();
    const auto limit = static_cast<std::size_t>(changedShareLimit * static_cast<double>(a.size()));
    std::size_t count = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (changed(a[i], b[i]) && ++count > limit)
            return false;
    }
    return true;
}

}  // namespace zd::AppearanceFollow
