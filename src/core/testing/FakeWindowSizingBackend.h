#pragma once
// Scripted windows per process; records every call in order as text.

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "env/WindowSizingBackend.h"

namespace zd::testing {

class FakeWindowSizingBackend : public WindowSizingBackend {
  public:
    std::optional<SizableWindow> mainWindow(std::int32_t pid) override {
        calls.push_back("mainWindow " + std::to_string(pid));
        auto it = mainWindows.find(pid);
        if (it == mainWindows.end())
            return std::nullopt;
        return it->second;
    }
    std::vector<SizableWindow> windows(std::int32_t pid) override {
        calls.push_back("windows " + std::to_string(pid));
        auto it = allWindows.find(pid);
        return it == allWindows.end() ? std::vector<SizableWindow>() : it->second;
    }
    bool setSize(SizableWindow window, Size size) override {
        calls.push_back("setSize " + std::to_string(window.handle));
        sizes.emplace_back(window, size);
        return true;
    }
    bool setPosition(SizableWindow window, Point topLeft) override {
        calls.push_back("setPosition " + std::to_string(window.handle));
        positions.emplace_back(window, topLeft);
        return true;
    }

    std::map<std::int32_t, SizableWindow> mainWindows;
    std::map<std::int32_t, std::vector<SizableWindow>> allWindows;
    std::vector<std::string> calls;
    std::vector<std::pair<SizableWindow, Size>> sizes;
    std::vector<std::pair<SizableWindow, Point>> positions;
};

}  // namespace zd::testing
