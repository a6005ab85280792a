#pragma once
// The platform's own named symbols (SF Symbols on macOS) as pictures for the canvas. CMake
// chooses the definition a build gets: the macOS edition's (platform/macos/SFSystemSymbols.mm),
// or NoSystemSymbols.cpp, which has none, so that our own artwork (SymbolArtwork) draws every
// symbol. Standard library and core types only: the Objective-C++ side includes it too.

#include <optional>
#include <string_view>

#include "model/Geometry.h"
#include "model/Image.h"

namespace zd::SystemSymbols {

struct Symbol {
    // The symbol's natural size at the point size, in canvas pixels (a point per pixel).
    Size size;
    // Its shape as coverage: only the alpha counts, the colour is the canvas's to give. Drawn
    // into the box of `size`, whatever its own pixel count.
    Image picture;
};

// The symbol `name` at `pointSize`, weight regular; none where the platform lacks it.
std::optional<Symbol> symbol(std::string_view name, double pointSize);

}  // namespace zd::SystemSymbols
