#include "ui/PickerTexts.h"

#include <algorithm>

#include "capture/FullDisplayCapture.h"

namespace zd {

namespace {

bool startsCharacter(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
}

std::size_t characterCount(const std::string& text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), startsCharacter));
}

// The first `count` characters (not bytes) of a UTF-8 text.
std::string firstCharacters(const std::string& text, std::size_t count) {
    std::size_t seen = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (startsCharacter(text[i])) {
            if (seen == count)
                return text.substr(0, i);
            ++seen;
        }
    }
    return text;
}

}  // namespace

std::string targetText(const CaptureTarget& target) {
    std::string text = CaptureEngine::label(target.appName, target.title);
    if (characterCount(text) >= 71)
        text = firstCharacters(text, 69) + "\u2026";
    return text;
}

std::string spaceText(const Spaces::Info& space) {
    return "Desktop " + std::to_string(space.ordinal) + (space.isCurrent ? " (current)" : "");
}

}  // namespace zd
