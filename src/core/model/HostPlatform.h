#pragma once
// Which system the program runs on, where the system's own words differ: a failure names the
// settings, tools and extensions of that system, not another's.

namespace zd {

enum class HostPlatform { macOS, x11 };

}  // namespace zd
