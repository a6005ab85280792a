#pragma once
// The system's own symbols (SF Symbols, such as "battery.100" or "wifi") as pictures, for the
// synthetic menu bar where the platform has them.

#include <optional>
#include <string>

#include "model/Color.h"
#include "model/Image.h"

namespace zd::mac::SFSymbols {

// The symbol `name` at `pointSize` in `color`, `scale` pixels per point; none for a name the
// system doesn't know.
std::optional<Image> image(const std::string& name, double pointSize, double scale, Color color);

}  // namespace zd::mac::SFSymbols
