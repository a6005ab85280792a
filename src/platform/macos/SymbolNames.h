#pragma once
// The spellings under which the system may know a symbol: SF Symbols renamed some between
// releases, and macOS 13 knows the battery levels only by their older names.

#include <string>
#include <string_view>
#include <vector>

namespace zd::mac::SymbolNames {

// `name` first, then its older spellings, newest first.
std::vector<std::string> spellings(std::string_view name);

}  // namespace zd::mac::SymbolNames
