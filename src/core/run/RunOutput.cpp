#include "run/RunOutput.h"

#include <algorithm>
#include <ctime>
#include <deque>
#include <future>
#include <regex>

#include "composition/Compositor.h"
#include "env/ImageCodec.h"

namespace zd {

namespace {

constexpr std::string_view emDashSeparator = " \u2014 ";

// One code point decoded from UTF-8 at `pos`, with its length in bytes; malformed bytes
// count as themselves so they are never taken for white space.
struct CodePoint {
    char32_t value;
    std::size_t length;
};

CodePoint decodeAt(std::string_view s, std::size_t pos) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(s[i]); };
    const unsigned char lead = byte(pos);
    std::size_t length = lead < 0x80 ? 1 : (lead >> 5) == 0x6 ? 2 : (lead >> 4) == 0xE ? 3 : 4;
    if (lead >= 0x80 && (lead < 0xC0 || pos + length > s.size()))
        return {lead, 1};
    char32_t value = length == 1   ? lead
                     : length == 2 ? (lead & 0x1Fu)
                     : length == 3 ? (lead & 0x0Fu)
                                   : (lead & 0x07u);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(pos + i) & 0xC0u) != 0x80u)
            return {lead, 1};
        value = (value << 6) | (byte(pos + i) & 0x3Fu);
    }
    return {value, length};
}

// Blanks as the platform counts them: tab and the Unicode space separators.
bool isBlank(char32_t c) {
    return c == U'\t' || c == U' ' || c == 0xA0 || c == 0x1680 || (c >= 0x2000 && c <= 0x200A) ||
           c == 0x202F || c == 0x205F || c == 0x3000;
}

bool isLineEnd(char32_t c) {
    return (c >= 0x0A && c <= 0x0D) || c == 0x85 || c == 0x2028 || c == 0x2029;
}

template <class Predicate>
std::string trimmed(std::string_view text, Predicate isTrimmed) {
    // Code points from the front, then the last code points found by walking forward.
    std::size_t begin = 0;
    while (begin < text.size()) {
        const CodePoint cp = decodeAt(text, begin);
        if (!isTrimmed(cp.value))
            break;
        begin += cp.length;
    }
    std::size_t end = begin;
    for (std::size_t pos = begin; pos < text.size();) {
        const CodePoint cp = decodeAt(text, pos);
        pos += cp.length;
        if (!isTrimmed(cp.value))
            end = pos;
    }
    return std::string(text.substr(begin, end - begin));
}

}  // namespace

std::string sanitize(std::string_view text) {
    constexpr std::string_view bad = "/\\:?*<>|\"";
    std::string replaced(text);
    std::replace_if(
        replaced.begin(), replaced.end(),
        [&](char ch) { return bad.find(ch) != std::string_view::npos; }, '_');
    return trimmed(replaced, isBlank);
}

std::string trimmedWhitespaceAndNewlines(std::string_view text) {
    return trimmed(text, [](char32_t c) { return isBlank(c) || isLineEnd(c); });
}

std::string stampString(std::chrono::system_clock::time_point time) {
    const std::time_t seconds = std::chrono::system_clock::to_time_t(time);
    std::tm local{};
    localtime_r(&seconds, &local);
    char buffer[32];
    const std::size_t length = std::strftime(buffer, sizeof buffer, "%Y-%m-%d-%H%M%S", &local);
    return std::string(buffer, length);
}

std::string runFolderName(const std::string& applicationWord, std::string_view variant,
                          const std::string& stamp) {
    std::string name = applicationWord;
    const std::string cleanVariant = trimmedWhitespaceAndNewlines(variant);
    if (!cleanVariant.empty()) {
        name += emDashSeparator;
        name += sanitize(cleanVariant);
    }
    name += emDashSeparator;
    name += stamp;
    return name;
}

std::string applicationWord(const std::string& menuBarAppName) {
    return sanitize(menuBarAppName.empty() ? std::string("Zephyrdock") : menuBarAppName);
}

Destination resolveDestination(DestinationMode mode,
                               const std::optional<std::filesystem::path>& lastRunRoot,
                               const std::filesystem::path& saveFolder,
                               const std::string& runFolder, std::string_view variant) {
    const std::string cleanVariant = trimmedWhitespaceAndNewlines(variant);
    if (mode == DestinationMode::group) {
        return {lastRunRoot ? *lastRunRoot : saveFolder / runFolder, cleanVariant};
    }
    return {saveFolder / runFolder, ""};
}

std::optional<std::filesystem::path> newestRunFolder(const std::filesystem::path& saveFolder,
                                                     const std::string& applicationWord) {
    static const std::regex stamped("\\d{4}-\\d{2}-\\d{2}-\\d{6}");
    const std::string start = applicationWord + std::string(emDashSeparator);
    std::optional<std::filesystem::path> newest;
    std::string newestKey;  // the stamp, then the name, so equal stamps still pick one
    std::error_code ec;
    for (auto it = std::filesystem::directory_iterator(saveFolder, ec);
         !ec && it != std::filesystem::directory_iterator(); it.increment(ec)) {
        const std::string name = it->path().filename().string();
        if (!it->is_directory(ec) || !name.starts_with(start) || name.size() < start.size() + 17)
            continue;
        const std::string stamp = name.substr(name.size() - 17);
        const bool variantOrNot = name.size() == start.size() + 17 ||
                                  name.substr(0, name.size() - 17).ends_with(emDashSeparator);
        if (!variantOrNot || !std::regex_match(stamp, stamped))
            continue;
        if (!newest || stamp + name > newestKey) {
            newest = it->path();
            newestKey = stamp + name;
        }
    }
    return newest;
}

Expected<std::filesystem::path, OutputError> uniquePath(const std::filesystem::path& folder,
                                                        const std::string& stem,
                                                        const std::string& ext) {
    std::error_code ec;
    std::filesystem::create_directories(folder, ec);
    if (ec)
        return unexpected(OutputError::fromErrorCode(ec));

    // Anything at the path counts as taken, a dangling link included, so a write never
    // follows a link out of the folder or over another file.
    const auto taken = [](const std::filesystem::path& path) {
        std::error_code statusError;
        return std::filesystem::symlink_status(path, statusError).type() !=
               std::filesystem::file_type::not_found;
    };
    std::filesystem::path candidate = folder / (stem + "." + ext);
    for (long long n = 2; taken(candidate); ++n) {
        candidate = folder / (stem + " (" + std::to_string(n) + ")." + ext);
    }
    return candidate;
}

std::string saveEntryId(const CapturedShot& shot) {
    return shot.languageCode + "-" + std::string(rawValue(shot.mode));
}

std::filesystem::path shotFolder(const std::filesystem::path& runRoot,
                                 const std::string& languageCode) {
    if (languageCode.empty())
        return runRoot;
    std::string component = sanitize(languageCode);
    std::replace(component.begin(), component.end(), '\0', '_');
    // "." and ".." would name the run folder itself or its parent.
    if (component == "." || component == "..")
        std::replace(component.begin(), component.end(), '.', '_');
    return runRoot / component;
}

namespace {

// Writes one shot's bytes at the first free name of its folder. The path is chosen only once
// every earlier file is on disk, so numbering sees them all.
Expected<void, OutputError> writeShot(const CapturedShot& shot,
                                      const std::optional<std::vector<std::uint8_t>>& png,
                                      const std::filesystem::path& runRoot,
                                      const std::string& prefix,
                                      std::vector<std::filesystem::path>* written) {
    const std::string mode(rawValue(shot.mode));
    const std::string stem = prefix.empty() ? mode : prefix + "-" + mode;
    auto path = uniquePath(shotFolder(runRoot, shot.languageCode), stem, "png");
    if (!path)
        return unexpected(path.error());
    if (!png || png->empty())
        return unexpected(OutputError::couldNotEncodePNG());
    auto wrote = Compositor::writeEncodedPNG(*png, *path);
    if (wrote && written != nullptr)
        written->push_back(*path);
    return wrote;
}

}  // namespace

EncodedShot encodeShot(CapturedShot shot, const ShotComposer& compose, const ImageCodec& codec) {
    Image picture = compose(shot);
    shot.image = Image();
    EncodedShot encoded{std::move(shot), std::nullopt, picture.width(), picture.height()};
    if (!picture.isNull())
        encoded.png = codec.encodePNG(picture);
    return encoded;
}

Expected<void, OutputError> writeEncoded(const std::vector<EncodedShot>& shots,
                                         const std::filesystem::path& runRoot,
                                         const std::string& variantPrefix,
                                         std::vector<std::filesystem::path>* written) {
    const std::string prefix = sanitize(trimmedWhitespaceAndNewlines(variantPrefix));
    for (const EncodedShot& encoded : shots) {
        if (auto done = writeShot(encoded.shot, encoded.png, runRoot, prefix, written); !done)
            return done;
    }
    return {};
}

Expected<void, OutputError> saveAll(const std::vector<CapturedShot>& shots,
                                    const std::filesystem::path& runRoot,
                                    const std::string& /*stamp*/, const std::string& variantPrefix,
                                    const ShotComposer& compose, const ImageCodec& codec,
                                    std::vector<std::filesystem::path>* written) {
    const std::string prefix = sanitize(trimmedWhitespaceAndNewlines(variantPrefix));
    // Shots are composed one at a time, in order, on the calling thread, and their files are
    // written one at a time, in the same order. Encoding costs more than composing, so up to
    // two pictures are encoded on other threads, one of them while the next is composed (at
    // most two finished pictures are held at once beside the captures). The first failure
    // ends the save before any later file is written.
    constexpr std::size_t maxEncoding = 2;
    struct Encoding {
        const CapturedShot* shot;
        std::future<std::optional<std::vector<std::uint8_t>>> bytes;  // nothing: not encoded
    };
    std::deque<Encoding> encoding;
    auto writeOldest = [&]() -> Expected<void, OutputError> {
        Encoding next = std::move(encoding.front());
        encoding.pop_front();
        return writeShot(*next.shot, next.bytes.get(), runRoot, prefix, written);
    };
    for (const CapturedShot& shot : shots) {
        if (encoding.size() == maxEncoding) {
            if (auto done = writeOldest(); !done)
                return done;
        }
        Image picture = compose(shot);
        auto encode = [picture = std::move(picture),
                       &codec]() -> std::optional<std::vector<std::uint8_t>> {
            if (picture.isNull())
                return std::nullopt;
            return codec.encodePNG(picture);
        };
        encoding.push_back({&shot, std::async(std::launch::async, std::move(encode))});
    }
    while (!encoding.empty()) {
        if (auto done = writeOldest(); !done)
            return done;
    }
    return {};
}

}  // namespace zd
