#pragma once
// Where the Linux edition looks for Zephyrdock_Zephyrdock.bundle, in order: the installed data
// folder beside the executable's (<prefix>/share/zephyrdock for <prefix>/bin/zephyrdock), then
// the executable's own folder (a build tree, where the bundle is painted into bin/).

#include <string>
#include <vector>

namespace zd {

std::vector<std::string> resourceBundleCandidates();

// The same for an executable at the given path; for tests.
std::vector<std::string> resourceBundleCandidates(const std::string& executablePath);

}  // namespace zd
