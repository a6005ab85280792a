#pragma once
// Zephyrdock's own icon, drawn from code at any size: a sky-blue tile holding a small window
// under a menu bar, framed by the corners of a viewfinder. The desktop's icon files are painted
// from it at build time and the application's windows carry it.

#include <QImage>

namespace zd::render {

// A square, premultiplied ARGB picture of `pixels` × `pixels`, transparent around the tile.
QImage drawAppIcon(int pixels);

}  // namespace zd::render
