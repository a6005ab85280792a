#pragma once
// What a run leaves on disk and how it is named: the run folder "{application} — {variant} —
// {stamp}", a folder per language code, and light.png / dark.png (with a variant prefix when
// grouping, and " (2)", " (3)" … on a collision). A run composes and encodes each shot as it
// comes (see ShotPipeline) and writes only the encoded bytes at its end.

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "composition/OutputError.h"
#include "model/CapturedShot.h"
#include "model/DestinationMode.h"
#include "model/Expected.h"
#include "model/Image.h"

namespace zd {

class ImageCodec;

// Replaces each of / \ : ? * < > | " with "_" and trims blanks and tabs at both ends. Case,
// script, dots and inner blanks stay as they are.
std::string sanitize(std::string_view text);

// Trims white space and line ends at both ends.
std::string trimmedWhitespaceAndNewlines(std::string_view text);

// "yyyy-MM-dd-HHmmss" in the system's time zone, e.g. 2026-03-09-141502.
std::string stampString(std::chrono::system_clock::time_point time);

// "{application} — {variant} — {stamp}", or "{application} — {stamp}" with an empty variant.
// `applicationWord` is used as given (already sanitized); the variant is trimmed and sanitized.
std::string runFolderName(const std::string& applicationWord, std::string_view variant,
                          const std::string& stamp);

// The application word of the run folder: the menu bar's application name, else "Zephyrdock",
// sanitized.
std::string applicationWord(const std::string& menuBarAppName);

// Where a run's files go and how they are prefixed.
struct Destination {
    std::filesystem::path runRoot;
    std::string variantPrefix;

    friend bool operator==(const Destination&, const Destination&) = default;
};

// Grouping with a previous run reuses its root and puts the variant into the file names; a new
// destination makes a run folder in the save folder and names it with the variant.
Destination resolveDestination(DestinationMode mode,
                               const std::optional<std::filesystem::path>& lastRunRoot,
                               const std::filesystem::path& saveFolder,
                               const std::string& runFolder, std::string_view variant);

// The run folder of `applicationWord` in `saveFolder` with the latest stamp, whatever its
// variant: what a later process joins when it groups with "the last run". None when there is
// no such folder (or the save folder can't be read).
std::optional<std::filesystem::path> newestRunFolder(const std::filesystem::path& saveFolder,
                                                     const std::string& applicationWord);

// A path "{stem}.{ext}" in `folder` where nothing exists yet, else "{stem} ({n}).{ext}" for the
// first free n from 2. Creates the folder and its parents first.
Expected<std::filesystem::path, OutputError> uniquePath(const std::filesystem::path& folder,
                                                        const std::string& stem,
                                                        const std::string& ext);

// The id of the plan entry a saved shot is composed under: "{languageCode}-{light|dark}".
std::string saveEntryId(const CapturedShot& shot);

// The folder of one shot: the run root, or its language folder named by the sanitized code.
// A code that would name "." or ".." stays inside the run root all the same.
std::filesystem::path shotFolder(const std::filesystem::path& runRoot,
                                 const std::string& languageCode);

// Composes one shot into its final picture.
using ShotComposer = std::function<Image(const CapturedShot&)>;

// A shot once composed and encoded: the shot without its pixels, its PNG (none when composing
// or encoding failed) and the composed picture's size in pixels.
struct EncodedShot {
    CapturedShot shot;
    std::optional<std::vector<std::uint8_t>> png;
    int width = 0;
    int height = 0;
};

// Turns one captured shot into its encoded picture. Runs on a worker: it holds everything it
// reads.
using ShotEncoder = std::function<EncodedShot(CapturedShot)>;

// Composes `shot`, lets its raw capture go, then encodes the picture.
EncodedShot encodeShot(CapturedShot shot, const ShotComposer& compose, const ImageCodec& codec);

// Writes encoded shots in order, named as saveAll names them. Stops at the first failure and
// returns it (a shot without bytes is "Could not encode PNG"); files already written stay. The
// paths of the files written, in the shots' order, go to `written` when given.
Expected<void, OutputError> writeEncoded(const std::vector<EncodedShot>& shots,
                                         const std::filesystem::path& runRoot,
                                         const std::string& variantPrefix,
                                         std::vector<std::filesystem::path>* written = nullptr);

// Composes and writes every shot in order, all at once: for a caller that holds every capture.
// Stops at the first failure and returns it; files already written stay. `stamp` is part of the
// call's shape and not used. The paths of the files written, in the shots' order, go to `written`
// when given.
Expected<void, OutputError> saveAll(const std::vector<CapturedShot>& shots,
                                    const std::filesystem::path& runRoot, const std::string& stamp,
                                    const std::string& variantPrefix, const ShotComposer& compose,
                                    const ImageCodec& codec,
                                    std::vector<std::filesystem::path>* written = nullptr);

}  // namespace zd
