// The render layer's named symbols on macOS: SF Symbols, by the first of a name's spellings
// the running system knows.

#include "SystemSymbols.h"

#include "macos/SFSymbols.h"
#include "macos/SymbolNames.h"

namespace zd::SystemSymbols {

std::optional<Symbol> symbol(std::string_view name, double pointSize) {
    for (const auto& spelling : mac::SymbolNames::spellings(name)) {
        if (auto found = mac::SFSymbols::picture(spelling, pointSize))
            return Symbol{found->size, std::move(found->picture)};
    }
    return std::nullopt;
}

}  // namespace zd::SystemSymbols
