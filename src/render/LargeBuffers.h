#pragma once
// Big pixel buffers without the cost of touching every 4 KiB page: a canvas or a decoded
// picture is tens of MiB, and on a busy machine thousands of page faults cost more than the
// drawing. Buffers are asked to be backed by huge pages (where the kernel grants them on
// request) before they're first written.

#include <cstddef>
#include <cstdint>
#include <memory>

#include "model/Image.h"

namespace zd {

class LargeBuffers {
  public:
    // Asks for huge pages under [data, data + bytes); harmless where unsupported.
    static void adviseHugePages(void* data, std::size_t bytes);

    // A fully transparent image (all zero) of width × height pixels; a null image when the
    // memory can't be had.
    static Image transparentImage(int width, int height);

    // Uninitialised bytes, for buffers whose every byte is written before it's read.
    static std::unique_ptr<std::uint8_t[]> bytes(std::size_t count);
};

}  // namespace zd
