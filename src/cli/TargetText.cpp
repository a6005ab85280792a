#include "TargetText.h"

#include <algorithm>
#include <cctype>
#include <charconv>

namespace zd::cli {

namespace {

std::size_t characterCount(const std::string& text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    }));
}

// The first `count` characters (not bytes) of a UTF-8 text.
std::string firstCharacters(const std::string& text, std::size_t count) {
    std::size_t seen = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80) {
            if (seen == count)
                return text.substr(0, i);
            ++seen;
        }
    }
    return text;
}

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

std::string targetText(const CaptureTarget& target) {
    std::string text = target.appName;
    if (!target.title.empty())
        text += " \u2014 " + target.title;
    if (characterCount(text) >= 71)
        text = firstCharacters(text, 69) + "\u2026";
    return text;
}

std::string spaceText(const Spaces::Info& space) {
    return "Desktop " + std::to_string(space.ordinal) + (space.isCurrent ? " (current)" : "");
}

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
