#include "LargeBuffers.h"

#include <sys/mman.h>

#include <new>
#include <vector>

namespace zd {

namespace {
constexpr std::uintptr_t kHugePage = 2u << 20;
}

void LargeBuffers::adviseHugePages(void* data, std::size_t bytes) {
#ifdef MADV_HUGEPAGE
    if (bytes < 2 * kHugePage)
        return;
    // Only whole huge pages inside the buffer can be advised.
    const auto begin = (reinterpret_cast<std::uintptr_t>(data) + kHugePage - 1) & ~(kHugePage - 1);
    const auto end = (reinterpret_cast<std::uintptr_t>(data) + bytes) & ~(kHugePage - 1);
    if (end > begin)
        madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);
#else
    (void)data;
    (void)bytes;
#endif
}

Image LargeBuffers::transparentImage(int width, int height) {
    if (width <= 0 || height <= 0)
        return {};
    const std::size_t count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    try {
        std::vector<std::uint32_t> pixels;
        pixels.reserve(count);
        adviseHugePages(pixels.data(), count * sizeof(std::uint32_t));
        pixels.resize(count, 0u);
        return Image(width, height, std::move(pixels));
    } catch (const std::bad_alloc&) {
        return {};
    } catch (const std::length_error&) {
        return {};
    }
}

std::unique_ptr<std::uint8_t[]> LargeBuffers::bytes(std::size_t count) {
    std::unique_ptr<std::uint8_t[]> buffer(new (std::nothrow) std::uint8_t[count]);
    if (buffer)
        adviseHugePages(buffer.get(), count);
    return buffer;
}

}  // namespace zd
