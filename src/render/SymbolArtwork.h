#pragma once
// Our own vector artwork for the status symbols of the synthetic menu bar, drawn in the
// spirit of the platform's symbols: battery levels, Wi-Fi, Spotlight's magnifying glass and
// Control Center's switches, and the main window's own symbols (tiles, chips, buttons). Each
// symbol's natural size is a fixed multiple of the point size. The platform's logo is not
// drawn on Linux: it is reported missing.

#include <QPainterPath>
#include <QSizeF>

#include <optional>
#include <string_view>

namespace zd {

class SymbolArtwork {
  public:
    // The symbol's natural size at `pointSize`, in pixels; nothing for an unknown name.
    static std::optional<QSizeF> naturalSize(std::string_view name, double pointSize);
    // Its shape at `pointSize`, filling the box (0, 0) – naturalSize with y downward.
    static std::optional<QPainterPath> shape(std::string_view name, double pointSize);
};

}  // namespace zd
