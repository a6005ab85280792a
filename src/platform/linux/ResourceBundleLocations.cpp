#include "ResourceBundleLocations.h"

#include <filesystem>
#include <system_error>

namespace zd {

namespace fs = std::filesystem;

std::vector<std::string> resourceBundleCandidates(const std::string& executablePath) {
    if (executablePath.empty())
        return {};
    fs::path folder = fs::path(executablePath).parent_path();
    return {(folder.parent_path() / "share" / "zephyrdock").string(), folder.string()};
}

std::vector<std::string> resourceBundleCandidates() {
    std::error_code error;
    fs::path executable = fs::read_symlink("/proc/self/exe", error);
    if (error)
        return {};
    return resourceBundleCandidates(executable.string());
}

}  // namespace zd
