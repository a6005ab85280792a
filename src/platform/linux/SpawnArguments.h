#pragma once
// Argument and environment lists as posix_spawn takes them.

#include <string>
#include <vector>

namespace zd::x11 {

// A null-terminated array of pointers into `strings`, which must outlive it unchanged.
inline std::vector<char*> spawnArray(std::vector<std::string>& strings) {
    std::vector<char*> pointers;
    pointers.reserve(strings.size() + 1);
    for (auto& text : strings)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

}  // namespace zd::x11
