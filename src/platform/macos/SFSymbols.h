#pragma once
// The system's own symbols (SF Symbols, such as "battery.100" or "wifi") as pictures, for the
// synthetic menu bar. Only for Objective-C++ files and the render layer's seam.

#include <optional>
#include <string>

#include "model/Geometry.h"
#include "model/Image.h"

namespace zd::mac::SFSymbols {

struct Picture {
    Size size;      // the symbol's size in points
    Image picture;  // its template picture: black, its shape in the alpha
};

// The symbol `name` at `pointSize`, weight regular; none for a name the system doesn't know.
std::optional<Picture> picture(const std::string& name, double pointSize);

}  // namespace zd::mac::SFSymbols
