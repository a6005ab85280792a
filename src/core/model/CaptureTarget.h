#pragma once
// One capturable window of another application. Its identity is the window number alone:
// a relaunched window is another target even with the same name and title.

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "model/Image.h"

namespace zd {

struct CaptureTarget {
    std::uint32_t id = 0;
    std::string appName;
    std::string title;
    std::int32_t pid = 0;
    // Without it the target can't be relaunched.
    std::optional<std::string> bundleId;
    std::optional<Image> icon;

    friend bool operator==(const CaptureTarget& a, const CaptureTarget& b) { return a.id == b.id; }
};

}  // namespace zd

template <>
struct std::hash<zd::CaptureTarget> {
    std::size_t operator()(const zd::CaptureTarget& t) const noexcept {
        return std::hash<std::uint32_t>()(t.id);
    }
};
