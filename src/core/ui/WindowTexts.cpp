#include "ui/WindowTexts.h"

#include <algorithm>
#include <cmath>
#include <filesystem>

#include "ui/PickerTexts.h"

namespace zd::WindowTexts {

namespace {

std::string counted(int count, const std::string& noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

std::string lastComponent(const std::string& path) {
    std::filesystem::path p(path);
    if (!p.has_filename())  // "/a/b/" names b
        p = p.parent_path();
    return p.filename().string();
}

int hexDigit(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

std::string percentDecoded(const std::string& text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '%' && i + 2 < text.size() && hexDigit(text[i + 1]) >= 0 &&
            hexDigit(text[i + 2]) >= 0) {
            out += static_cast<char>(hexDigit(text[i + 1]) * 16 + hexDigit(text[i + 2]));
            i += 2;
        } else {
            out += text[i];
        }
    }
    return out;
}

}  // namespace

std::string noTargetItem(CaptureScope scope) {
    return scope == CaptureScope::singleWindow ? "\u2014 pick a window \u2014"
                                               : "\u2014 none (capture as-is) \u2014";
}

std::string targetSelectionLabel(const std::vector<CaptureTarget>& targets,
                                 std::optional<std::uint32_t> selectedTargetID,
                                 CaptureScope scope) {
    auto found = std::find_if(targets.begin(), targets.end(), [&](const CaptureTarget& t) {
        return selectedTargetID && t.id == *selectedTargetID;
    });
    return found == targets.end() ? noTargetItem(scope) : targetText(*found);
}

std::string compositeWindowsButtonLabel(const std::vector<CompositeEntry>& rows) {
    if (rows.empty())
        return "No windows visible";
    const auto enabled = std::count_if(rows.begin(), rows.end(),
                                       [](const CompositeEntry& row) { return row.enabled; });
    return std::to_string(enabled) + " of " + counted(static_cast<int>(rows.size()), "window");
}

std::string spacePickerLabel(const std::vector<Spaces::Info>& spaces, std::uint64_t selectedID) {
    for (const auto& space : spaces) {
        if (space.id == selectedID)
            return spaceText(space);
    }
    return "\u2014";
}

double compositeListHeight(std::size_t rows) {
    return std::min(36.0 * static_cast<double>(rows), 252.0);
}

std::vector<LanguageSelection> addableLanguages(const std::vector<LanguageSelection>& chosen) {
    std::vector<LanguageSelection> offered;
    for (const auto& language : LanguageCatalog::common()) {
        const bool taken = std::any_of(chosen.begin(), chosen.end(),
                                       [&](const auto& c) { return c.code == language.code; });
        if (!taken)
            offered.push_back(language);
    }
    return offered;
}

std::string languageMenuItem(const LanguageSelection& language) {
    return language.label + " (" + language.code + ")";
}

std::string canvasSizeText(Size canvas) {
    return std::to_string(std::lround(canvas.width)) + " \u00d7 " +
           std::to_string(std::lround(canvas.height)) + " pixels";
}

std::string backgroundKindWord(BackgroundKind kind) {
    switch (kind) {
        case BackgroundKind::transparent:
            return "Transparent";
        case BackgroundKind::color:
            return "Color";
        case BackgroundKind::image:
            break;
    }
    return "Image";
}

std::string imageButtonTitle(const std::optional<std::string>& path) {
    return path ? lastComponent(*path) : std::string("Choose image\u2026");
}

std::string batterySymbol(int percent) {
    if (percent < 13)
        return "battery.0percent";
    if (percent < 38)
        return "battery.25percent";
    if (percent < 63)
        return "battery.50percent";
    if (percent < 88)
        return "battery.75percent";
    return "battery.100percent";
}

std::string plannedOutputsText(int count) {
    return counted(count, "planned output");
}

std::string takeButtonText(int count) {
    return "Take " + counted(count, "shot");
}

std::string countdownLabel(int seconds) {
    return seconds != 0 ? std::to_string(seconds) + "s" : std::string("Off");
}

std::string saveFolderButtonTitle(const std::optional<std::string>& path) {
    return path ? lastComponent(*path) : std::string("Choose save folder\u2026");
}

std::optional<std::string> firstLocalFile(const std::vector<std::string>& urls) {
    if (urls.empty())
        return std::nullopt;
    std::string url = urls.front();
    const std::string scheme = "file://";
    if (url.size() <= scheme.size() || url.compare(0, scheme.size(), scheme) != 0)
        return std::nullopt;
    url.erase(0, scheme.size());
    if (url.compare(0, 9, "localhost") == 0)
        url.erase(0, 9);
    if (url.empty() || url.front() != '/')
        return std::nullopt;  // a file on another host
    return percentDecoded(url);
}

}  // namespace zd::WindowTexts
