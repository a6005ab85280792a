#include "store/StoreRules.h"

#include <algorithm>
#include <map>

namespace zd::StoreRules {

namespace {

std::string sizeText(int width, int height) {
    return std::to_string(width) + " \u00d7 " + std::to_string(height);
}

std::string macAppStoreSizesText() {
    std::string text;
    for (std::size_t i = 0; i < macAppStoreSizes.size(); ++i) {
        if (i > 0)
            text += i + 1 == macAppStoreSizes.size() ? " or " : ", ";
        text += sizeText(macAppStoreSizes[i].width, macAppStoreSizes[i].height);
    }
    return text;
}

std::string megabytes(std::uintmax_t bytes) {
    const std::uintmax_t tenths = (bytes + 50'000) / 100'000;
    return std::to_string(tenths / 10) + "." + std::to_string(tenths % 10) + " MB";
}

// How a background lets the canvas through: "" when it doesn't.
std::string seeThrough(const BackgroundChoice& background) {
    if (background.kind == BackgroundKind::transparent)
        return "transparent";
    if (background.kind == BackgroundKind::color && background.fillColor.alpha < 1.0)
        return "translucent";
    return "";
}

bool isMacAppStoreSize(int width, int height) {
    return std::any_of(macAppStoreSizes.begin(), macAppStoreSizes.end(),
                       [&](const PixelSize& s) { return s.width == width && s.height == height; });
}

std::string colourTypeProblem(int colourType) {
    switch (colourType) {
        case 0:
        case 4:
            return "greyscale, not RGB";
        case 3:
            return "palette colours, not RGB";
        default:
            return "";
    }
}

std::vector<std::string> macAppStoreProblems(const PictureFacts& p) {
    std::vector<std::string> problems;
    if (!isMacAppStoreSize(p.width, p.height))
        problems.push_back(sizeText(p.width, p.height) + " isn't one of the store's sizes (" +
                           macAppStoreSizesText() + ")");
    if (p.alphaChannel)
        problems.emplace_back(p.transparentPixels ? "alpha channel, with transparent pixels"
                                                  : "alpha channel (though every pixel is opaque)");
    if (auto colour = colourTypeProblem(p.colourType); !colour.empty())
        problems.push_back(colour);
    if (p.bitDepth == 16)
        problems.emplace_back("16-bit samples");
    if (p.interlaced)
        problems.emplace_back("interlaced");
    if (p.fileBytes > macAppStoreFileBytes)
        problems.push_back(megabytes(p.fileBytes) + ", more than " +
                           megabytes(macAppStoreFileBytes));
    return problems;
}

std::vector<std::string> flathubProblems(const PictureFacts& p) {
    std::vector<std::string> problems;
    // The window at its largest: the logical limit at density 2.
    const int maxWidth = flathubLogicalWindow.width * 2;
    const int maxHeight = flathubLogicalWindow.height * 2;
    if (p.opaqueBounds.width > maxWidth || p.opaqueBounds.height > maxHeight)
        problems.push_back(
            "the window is " + sizeText(p.opaqueBounds.width, p.opaqueBounds.height) +
            " pixels, more than " +
            sizeText(flathubLogicalWindow.width, flathubLogicalWindow.height) + " logical pixels");
    if (!p.transparentPixels)
        problems.emplace_back("no transparent background around the window");
    if (p.bitDepth == 16)
        problems.emplace_back("16-bit samples");
    if (p.interlaced)
        problems.emplace_back("interlaced");
    if (p.fileBytes > flathubFileBytes)
        problems.push_back(megabytes(p.fileBytes) + ", more than " + megabytes(flathubFileBytes));
    return problems;
}

}  // namespace

std::optional<std::string> planWarning(const PlannedPictures& planned) {
    if (planned.store != Store::macAppStore)
        return std::nullopt;
    std::vector<std::string> reasons;
    for (AppearanceMode mode : {AppearanceMode::light, AppearanceMode::dark}) {
        if (planned.appearances.count(mode) == 0)
            continue;
        const auto& background =
            mode == AppearanceMode::light ? planned.lightBackground : planned.darkBackground;
        if (auto how = seeThrough(background); !how.empty())
            reasons.push_back("the " + std::string(title(mode)) + " background is " + how +
                              " and it refuses alpha");
    }
    if (planned.canvas) {
        const int width = static_cast<int>(planned.canvas->width);
        const int height = static_cast<int>(planned.canvas->height);
        if (!isMacAppStoreSize(width, height))
            reasons.push_back("the canvas " + sizeText(width, height) + " isn't " +
                              macAppStoreSizesText());
    }
    if (reasons.empty())
        return std::nullopt;
    std::string line = "The Mac App Store won't accept these pictures: ";
    for (std::size_t i = 0; i < reasons.size(); ++i)
        line += (i > 0 ? "; " : "") + reasons[i];
    return line + ".";
}

bool CheckReport::passed() const {
    return groupProblems.empty() &&
           std::all_of(files.begin(), files.end(),
                       [](const FileFindings& f) { return f.problems.empty(); });
}

CheckReport check(Store store, const std::vector<PictureFacts>& pictures) {
    CheckReport report;
    std::map<std::string, int> perGroup;
    for (const PictureFacts& p : pictures) {
        ++perGroup[p.group];
        FileFindings findings{p.path, {}};
        if (p.unreadable)
            findings.problems.push_back(*p.unreadable);
        else
            findings.problems =
                store == Store::flathub ? flathubProblems(p) : macAppStoreProblems(p);
        report.files.push_back(std::move(findings));
    }
    if (store == Store::macAppStore) {
        for (const auto& [group, count] : perGroup) {
            if (count > macAppStorePicturesPerLanguage)
                report.groupProblems.push_back(
                    (group.empty() ? std::string("the run folder") : group) + ": " +
                    std::to_string(count) + " pictures, more than the " +
                    std::to_string(macAppStorePicturesPerLanguage) +
                    " the store takes for one language");
        }
    }
    return report;
}

}  // namespace zd::StoreRules
