#include "capture/RunningApps.h"

#include <algorithm>

#include "capture/WindowRecord.h"
#include "env/Environment.h"
#include "env/ProcessBackend.h"
#include "env/WindowListBackend.h"

namespace zd::RunningApps {

namespace {

// Decodes one UTF-8 sequence at `i` (advancing it); malformed bytes stand for themselves.
char32_t nextCodePoint(std::string_view s, std::size_t& i) {
    auto byte = [&](std::size_t k) { return static_cast<unsigned char>(s[k]); };
    unsigned char lead = byte(i);
    int extra = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : 0;
    if (extra == 0 || i + static_cast<std::size_t>(extra) >= s.size()) {
        ++i;
        return lead;
    }
    char32_t cp = lead & (0x3F >> extra);
    for (int k = 1; k <= extra; ++k)
        cp = (cp << 6) | (byte(i + static_cast<std::size_t>(k)) & 0x3F);
    i += static_cast<std::size_t>(extra) + 1;
    return cp;
}

char32_t folded(char32_t c) {
    if (c >= U'A' && c <= U'Z')
        return c + 32;
    if ((c >= 0xC0 && c <= 0xDE && c != 0xD7))
        return c + 32;  // À…Þ but not ×
    return c;
}

}  // namespace

int compareCaseInsensitive(std::string_view a, std::string_view b) {
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < a.size() && j < b.size()) {
        char32_t ca = folded(nextCodePoint(a, i));
        char32_t cb = folded(nextCodePoint(b, j));
        if (ca != cb)
            return ca < cb ? -1 : 1;
    }
    if (i < a.size())
        return 1;
    if (j < b.size())
        return -1;
    return 0;
}

std::vector<CaptureTarget> currentTargets(const Environment& env) {
    std::vector<CaptureTarget> targets;
    if (!env.windowList || !env.processes)
        return targets;
    Value list = env.windowList->windowList(WindowListOption::excludeDesktopElements);
    const ValueArray* entries = list.asArray();
    if (!entries)
        return targets;
    if (!std::all_of(entries->begin(), entries->end(),
                     [](const Value& e) { return e.isDictionary(); })) {
        return targets;
    }
    const std::int32_t ownPid = env.processes->currentProcessId();
    for (const Value& entry : *entries) {
        if (WindowRecord::layer(entry) != 0)
            continue;
        auto pid = WindowRecord::ownerPID(entry);
        if (!pid || *pid == ownPid)
            continue;
        auto owner = WindowRecord::ownerName(entry);
        if (!owner)
            continue;
        auto number = WindowRecord::number(entry);
        if (!number)
            continue;
        if (!WindowRecord::passesSize(entry, 200, 100))
            continue;
        std::string title = WindowRecord::name(entry);
        auto app = env.processes->runningApplication(*pid);
        if (!app || app->activationPolicy != ActivationPolicy::regular)
            continue;
        targets.push_back(CaptureTarget{*number, *owner, std::move(title), *pid,
                                        app->bundleIdentifier, app->icon});
    }
    std::stable_sort(targets.begin(), targets.end(), [](const auto& a, const auto& b) {
        int byApp = compareCaseInsensitive(a.appName, b.appName);
        if (byApp != 0)
            return byApp < 0;
        return compareCaseInsensitive(a.title, b.title) < 0;
    });
    return targets;
}

}  // namespace zd::RunningApps
