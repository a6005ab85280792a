#pragma once
// Between the core's images and Qt's: both are premultiplied 32-bit ARGB, so this is a copy.

#include <QImage>

#include "model/Image.h"

namespace zd {

QImage toQImage(const Image& image);
Image fromQImage(const QImage& image);

}  // namespace zd
