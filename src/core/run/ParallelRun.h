#pragma once
// A headless run split over several private sessions at once: which languages each session
// walks, how many sessions a machine carries, what the whole run says when it is stopped, and
// how the pictures the sessions staged become one run folder with exactly the names, numbering
// and order a run of all languages in one session gives.

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "composition/OutputError.h"
#include "model/AppearanceMode.h"
#include "model/Expected.h"
#include "model/LanguageSelection.h"

namespace zd::ParallelRun {

// What one session costs while it runs, measured on a 2880×1800 display: the display server,
// window manager, buses, the target and the capturing process with its shots.
inline constexpr std::uint64_t kSessionMemoryBytes = 450ull << 20;

// The languages in `sessions` consecutive parts, in order, sizes differing by at most one (the
// larger parts first), so the parts one after another are the list itself. No part is empty:
// fewer languages than sessions give fewer parts.
std::vector<std::vector<LanguageSelection>> splitLanguages(
    const std::vector<LanguageSelection>& languages, int sessions);

// Sessions when none are asked for: one per core and one more (a session spends much of its
// time waiting for its target, not computing), no more than the languages and than the free
// memory carries, and at least one.
int defaultSessionCount(int languages, int cores, std::uint64_t availableMemoryBytes);

// The whole run's words for a stop: the sessions' own statuses and the shots all of them had
// captured. None had started capturing: "Stopped before capture started."; else the stop text
// with the total.
std::string stopText(const std::vector<std::string>& sessionStatuses, int capturedShots);

// A picture one session saved: its folder relative to the staged run folder ("" for the run
// folder itself, else the language folder), its mode, and which of that folder's pictures of
// that mode it is (1 for "light.png", 2 for "light (2).png", …).
struct StagedPicture {
    std::filesystem::path file;
    std::string folder;
    AppearanceMode mode = AppearanceMode::light;
    int occurrence = 1;

    friend bool operator==(const StagedPicture&, const StagedPicture&) = default;
};

// The pictures a session saved into `stagedRunRoot` (a run folder of its own, without variant
// prefix), in the order that session's run took them: language folders in the order of
// `languages` (others after, by name), then by occurrence, Light before Dark.
std::vector<StagedPicture> stagedPictures(const std::filesystem::path& stagedRunRoot,
                                          const std::vector<LanguageSelection>& languages);

// Moves the pictures, all sessions' in the order of the sessions, into `runRoot` as one run's
// save names them: "{prefix-}light.png" in the same folder, numbered on a collision (with
// earlier runs of a group too). Stops at the first failure and returns it; pictures already
// moved stay. The paths written, in order, come back.
Expected<std::vector<std::filesystem::path>, OutputError> mergeInto(
    const std::vector<StagedPicture>& pictures, const std::filesystem::path& runRoot,
    const std::string& variantPrefix);

}  // namespace zd::ParallelRun
