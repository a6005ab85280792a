#include "run/ParallelRun.h"

#include <algorithm>
#include <regex>
#include <tuple>

#include "run/RunOutput.h"
#include "run/RunTexts.h"

namespace zd::ParallelRun {

namespace fs = std::filesystem;

std::vector<std::vector<LanguageSelection>> splitLanguages(
    const std::vector<LanguageSelection>& languages, int sessions) {
    const std::size_t count = languages.size();
    const std::size_t parts =
        std::min<std::size_t>(count, static_cast<std::size_t>(std::max(sessions, 1)));
    std::vector<std::vector<LanguageSelection>> split;
    std::size_t next = 0;
    for (std::size_t part = 0; part < parts; ++part) {
        const std::size_t size = count / parts + (part < count % parts ? 1 : 0);
        split.emplace_back(languages.begin() + static_cast<std::ptrdiff_t>(next),
                           languages.begin() + static_cast<std::ptrdiff_t>(next + size));
        next += size;
    }
    return split;
}

int defaultSessionCount(int languages, int cores, std::uint64_t availableMemoryBytes) {
    const auto byMemory =
        static_cast<int>(std::min<std::uint64_t>(availableMemoryBytes / kSessionMemoryBytes, 1024));
    return std::max(1, std::min({languages, std::max(cores, 1) + 1, byMemory}));
}

std::string stopText(const std::vector<std::string>& sessionStatuses, int capturedShots) {
    // A session stopped before its run began (still waiting for its target) has no status.
    const bool noneCapturing = std::all_of(
        sessionStatuses.begin(), sessionStatuses.end(),
        [](const std::string& s) { return s.empty() || s == RunTexts::stoppedBeforeCapture; });
    return noneCapturing && capturedShots == 0 ? RunTexts::stoppedBeforeCapture
                                               : RunTexts::stoppedWithShots(capturedShots);
}

std::vector<StagedPicture> stagedPictures(const fs::path& stagedRunRoot,
                                          const std::vector<LanguageSelection>& languages) {
    // Saved names only: "light.png", "dark (2).png"; anything else isn't a picture of the run.
    static const std::regex saved("(light|dark)(?: \\(([0-9]{1,9})\\))?\\.png");
    std::vector<std::string> folderOrder;
    for (const auto& language : languages) {
        const std::string folder = shotFolder("", language.code).string();
        if (std::find(folderOrder.begin(), folderOrder.end(), folder) == folderOrder.end())
            folderOrder.push_back(folder);
    }
    std::vector<StagedPicture> pictures;
    auto collect = [&](const fs::path& folder, const std::string& relative) {
        std::error_code ec;
        for (auto it = fs::directory_iterator(folder, ec); !ec && it != fs::directory_iterator();
             it.increment(ec)) {
            std::smatch match;
            const std::string name = it->path().filename().string();
            if (!it->is_regular_file(ec) || !std::regex_match(name, match, saved))
                continue;
            pictures.push_back({it->path(), relative,
                                match[1] == "light" ? AppearanceMode::light : AppearanceMode::dark,
                                match[2].matched ? std::stoi(match[2]) : 1});
        }
    };
    collect(stagedRunRoot, "");
    std::error_code ec;
    for (auto it = fs::directory_iterator(stagedRunRoot, ec); !ec && it != fs::directory_iterator();
         it.increment(ec)) {
        if (it->is_directory(ec))
            collect(it->path(), it->path().filename().string());
    }
    auto rank = [&](const StagedPicture& p) {
        const auto known = std::find(folderOrder.begin(), folderOrder.end(), p.folder);
        return std::make_tuple(
            p.folder.empty() ? -1 : static_cast<int>(known - folderOrder.begin()), p.folder,
            p.occurrence, p.mode == AppearanceMode::dark);
    };
    std::sort(pictures.begin(), pictures.end(),
              [&](const StagedPicture& a, const StagedPicture& b) { return rank(a) < rank(b); });
    return pictures;
}

Expected<std::vector<fs::path>, OutputError> mergeInto(const std::vector<StagedPicture>& pictures,
                                                       const fs::path& runRoot,
                                                       const std::string& variantPrefix) {
    // The stems and numbering of the save itself: a file's number depends only on what its
    // folder already holds, so moving the sessions' pictures in order gives the same names.
    const std::string prefix = sanitize(trimmedWhitespaceAndNewlines(variantPrefix));
    std::vector<fs::path> written;
    for (const StagedPicture& picture : pictures) {
        const std::string mode(rawValue(picture.mode));
        const std::string stem = prefix.empty() ? mode : prefix + "-" + mode;
        const fs::path folder = picture.folder.empty() ? runRoot : runRoot / picture.folder;
        auto path = uniquePath(folder, stem, "png");
        if (!path)
            return unexpected(path.error());
        std::error_code ec;
        fs::rename(picture.file, *path, ec);
        if (ec == std::errc::cross_device_link) {
            // Staged on another file system: copied, and the staged file goes with its folder.
            ec.clear();
            fs::copy_file(picture.file, *path, ec);
        }
        if (ec)
            return unexpected(OutputError::fromErrorCode(ec));
        written.push_back(*path);
    }
    return written;
}

}  // namespace zd::ParallelRun
