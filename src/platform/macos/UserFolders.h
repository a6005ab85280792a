#pragma once
// The user's folders as the system names them.

#include <filesystem>
#include <optional>

namespace zd::mac::UserFolders {

// ~/Library/Application Support as Foundation finds it; none when it gives no folder.
std::optional<std::filesystem::path> applicationSupport();

}  // namespace zd::mac::UserFolders
