#pragma once
// The window server's list of windows, as it answers: an array of dictionaries, front-most
// window first, with its own key names ("kCGWindowNumber", "kCGWindowLayer",
// "kCGWindowOwnerPID", "kCGWindowOwnerName", "kCGWindowName", "kCGWindowBounds" holding
// {"X", "Y", "Width", "Height"}). The core decides which entries and keys it trusts.

#include <cstdint>

#include "model/Value.h"

namespace zd {

// Which windows the list holds (the window server's raw option values).
enum class WindowListOption : std::uint32_t {
    allWindows = 0,
    onScreenOnly = 1,             // only windows that are shown now
    excludeDesktopElements = 16,  // no desktop background or icons
};

// The options are flags: a request may combine them.
constexpr bool hasOption(WindowListOption options, WindowListOption flag) {
    return (static_cast<std::uint32_t>(options) & static_cast<std::uint32_t>(flag)) != 0;
}

class WindowListBackend {
  public:
    virtual ~WindowListBackend() = default;
    // Every window, including those on other desktops and minimised ones. A null value when
    // the system gives nothing.
    virtual Value windowList(WindowListOption option) const = 0;
};

// Key names of a window record.
namespace WindowKey {
inline constexpr const char* number = "kCGWindowNumber";
inline constexpr const char* layer = "kCGWindowLayer";
inline constexpr const char* ownerPID = "kCGWindowOwnerPID";
inline constexpr const char* ownerName = "kCGWindowOwnerName";
inline constexpr const char* name = "kCGWindowName";
inline constexpr const char* bounds = "kCGWindowBounds";
}  // namespace WindowKey

}  // namespace zd
