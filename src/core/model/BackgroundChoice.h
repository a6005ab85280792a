#pragma once
// One background, one of these per appearance. `url` and `fillColor` are kept when the kind
// doesn't use them, so switching back finds them again.

#include <optional>
#include <string>

#include "model/BackgroundKind.h"
#include "model/Color.h"
#include "model/Image.h"

namespace zd {

class ImageCodec;

struct BackgroundChoice {
    BackgroundKind kind = BackgroundKind::color;
    std::optional<std::string> url;  // an absolute file path
    Color fillColor;

    // The picture, read anew on every call; nothing unless the kind is `image` and the file
    // at `url` can be read.
    std::optional<Image> image(const ImageCodec& codec) const;

    friend bool operator==(const BackgroundChoice&, const BackgroundChoice&) = default;
};

}  // namespace zd
