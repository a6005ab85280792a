#include "model/BackgroundChoice.h"

#include "env/ImageCodec.h"

namespace zd {

std::optional<Image> BackgroundChoice::image(const ImageCodec& codec) const {
    if (kind != BackgroundKind::image || !url) return std::nullopt;
    return codec.load(*url);
}

}  // namespace zd
