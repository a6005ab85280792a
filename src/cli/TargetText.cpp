#include "TargetText.h"

#include <algorithm>
#include <cctype>
#include <charconv>

namespace zd::cli {

namespace {

std::string lowered(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

std::string candidates(const std::vector<CaptureTarget>& matches) {
    std::string list;
    for (const auto& target : matches)
        list += "\n  " + std::to_string(target.id) + "  " + targetText(target);
    return list;
}

}  // namespace

Expected<CaptureTarget, std::string> resolveTarget(const std::vector<CaptureTarget>& targets,
                                                   const std::string& word) {
    std::uint32_t number = 0;
    auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    if (error == std::errc() && end == word.data() + word.size()) {
        for (const auto& target : targets) {
            if (target.id == number)
                return target;
        }
    }
    const std::string wanted = lowered(word);
    // Whole names first, so "gedit" doesn't also pick a window titled "gedit tips".
    std::vector<CaptureTarget> matches;
    for (const auto& target : targets) {
        if (lowered(target.appName) == wanted || lowered(target.title) == wanted)
            matches.push_back(target);
    }
    if (matches.empty() && !wanted.empty()) {
        for (const auto& target : targets) {
            if (lowered(target.appName + " \u2014 " + target.title).find(wanted) !=
                std::string::npos)
                matches.push_back(target);
        }
    }
    if (matches.size() == 1)
        return matches.front();
    if (matches.empty())
        return unexpected("no window matches \"" + word +
                          "\"; \"zephyrdock targets\" lists the windows");
    return unexpected("\"" + word + "\" matches " + std::to_string(matches.size()) +
                      " windows; give one of their numbers:" + candidates(matches));
}

}  // namespace zd::cli
