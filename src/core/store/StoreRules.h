#pragma once
// What the stores accept, said before a run (one line in the plan and the preview's header)
// and checked after it (`zephyrdock check`). App Store Connect refuses screenshots with an
// alpha channel at all, or of any other size than four; Flathub wants the window on
// transparency at a modest size.

#include <array>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "model/AppearanceMode.h"
#include "model/BackgroundChoice.h"
#include "model/Geometry.h"
#include "store/Store.h"

namespace zd::StoreRules {

struct PixelSize {
    int width = 0;
    int height = 0;
    friend bool operator==(const PixelSize&, const PixelSize&) = default;
};

// The Mac App Store's screenshot sizes, smallest first.
inline constexpr std::array<PixelSize, 4> macAppStoreSizes{
    {{1280, 800}, {1440, 900}, {2560, 1600}, {2880, 1800}}};
// App Store Connect takes at most this many screenshots per language.
inline constexpr int macAppStorePicturesPerLanguage = 10;
// Flathub asks for the window at no more than this many logical pixels.
inline constexpr PixelSize flathubLogicalWindow{1000, 700};
// Our limits on one file: a screenshot of the largest canvas is a few megabytes; a file well
// past these is slow to upload and heavy on the store's pages.
inline constexpr std::uintmax_t macAppStoreFileBytes = 10'000'000;
inline constexpr std::uintmax_t flathubFileBytes = 3'000'000;

// What the plan knows of the pictures a run will write.
struct PlannedPictures {
    Store store = Store::macAppStore;
    std::optional<Size> canvas;  // none when it isn't known yet (the display's own size)
    std::set<AppearanceMode> appearances;
    BackgroundChoice lightBackground;
    BackgroundChoice darkBackground;
};

// One line saying why the store would refuse the planned pictures; none when it would take
// them. Never blocks a run.
std::optional<std::string> planWarning(const PlannedPictures& planned);

// What a check reads of one PNG file.
struct PictureFacts {
    std::string path;   // as shown in the report
    std::string group;  // the pictures of one language share it (their folder)
    std::uintmax_t fileBytes = 0;
    std::optional<std::string> unreadable;  // why the file isn't a PNG that can be read
    int width = 0;
    int height = 0;
    int bitDepth = 8;
    int colourType = 2;  // PNG's numbers: 0 grey, 2 RGB, 3 palette, 4 grey+alpha, 6 RGBA
    bool interlaced = false;
    bool alphaChannel = false;       // colour type 4 or 6, or a tRNS chunk
    bool transparentPixels = false;  // some pixel isn't fully opaque
    PixelSize opaqueBounds;          // the box around the fully opaque pixels
};

struct FileFindings {
    std::string path;
    std::vector<std::string> problems;  // empty: the store takes it
};

struct CheckReport {
    std::vector<FileFindings> files;
    std::vector<std::string> groupProblems;  // too many pictures for one language
    bool passed() const;
};

// What `store` would refuse of each picture, and of the pictures of each language together.
CheckReport check(Store store, const std::vector<PictureFacts>& pictures);

}  // namespace zd::StoreRules
