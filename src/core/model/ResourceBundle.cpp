#include "model/ResourceBundle.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace zd {

namespace fs = std::filesystem;

ResourceBundle::ResourceBundle(std::vector<std::string> candidateBaseFolders)
    : candidates_(std::move(candidateBaseFolders)) {}

std::optional<std::string> ResourceBundle::locate(
    const std::vector<std::string>& candidateBaseFolders) {
    for (const auto& base : candidateBaseFolders) {
        if (base.empty())
            continue;
        fs::path candidate = fs::path(base) / folderName;
        std::error_code error;
        if (fs::is_directory(candidate, error))
            return candidate.lexically_normal().string();
    }
    return std::nullopt;
}

const std::string& ResourceBundle::path() {
    std::call_once(once_, [this] {
        auto found = locate(candidates_);
        if (!found) {
            // A packaging fault, not a user's mistake: there is nothing to fall back to.
            std::fprintf(stderr, "Fatal error: unable to find bundle named %.*s\n",
                         static_cast<int>(name.size()), name.data());
            std::fflush(stderr);
            std::abort();
        }
        path_ = *found;
    });
    return path_;
}

std::optional<std::string> ResourceBundle::url(std::string_view resource,
                                               std::string_view extension) {
    fs::path file = fs::path(path()) / (std::string(resource) + "." + std::string(extension));
    std::error_code error;
    if (!fs::is_regular_file(file, error))
        return std::nullopt;
    return file.string();
}

}  // namespace zd
