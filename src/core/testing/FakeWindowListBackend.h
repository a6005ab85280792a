#pragma once
// A window list scripted as the window server would answer it: one reply for all windows and
// one with desktop elements left out. Records which options were asked for.

#include <vector>

#include "env/WindowListBackend.h"

namespace zd::testing {

class FakeWindowListBackend : public WindowListBackend {
  public:
    Value windowList(WindowListOption option) const override {
        requests.push_back(option);
        return option == WindowListOption::allWindows ? allWindows : withoutDesktop;
    }
    // Sets both replies at once.
    void setWindows(const Value& reply) { allWindows = withoutDesktop = reply; }

    Value allWindows;
    Value withoutDesktop;
    mutable std::vector<WindowListOption> requests;
};

// One record with the window server's keys.
inline Value windowRecord(std::uint32_t number, std::int32_t pid, const std::string& owner,
                          const std::string& name, Rect bounds, int layer = 0) {
    return ValueDictionary{
        {WindowKey::number, static_cast<std::int64_t>(number)},
        {WindowKey::layer, layer},
        {WindowKey::ownerPID, pid},
        {WindowKey::ownerName, owner},
        {WindowKey::name, name},
        {WindowKey::bounds,
         ValueDictionary{
             {"X", bounds.x}, {"Y", bounds.y}, {"Width", bounds.width}, {"Height", bounds.height}}},
    };
}

}  // namespace zd::testing
