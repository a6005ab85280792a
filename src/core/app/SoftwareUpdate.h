#pragma once
// Software update on desktops without Sparkle: what the feed offers, whether it is newer than
// the running version, and the words the check shows. The feed itself is an appcast (an RSS
// channel whose items carry a version and a page), fetched and parsed by the shell; a failed
// check shows nothing, so only the two answers have texts.

#include <optional>
#include <string>
#include <vector>

namespace zd::SoftwareUpdate {

// One release as the feed describes it.
struct Release {
    std::string version;         // the build version compared against ours ("1.4.2", "142")
    std::string displayVersion;  // what users call it; the version when the feed has none
    std::string pageURL;         // where to read about and fetch it; may be empty
};

// The settings key of the feed's address; empty or absent means no checks at all.
inline constexpr const char* feedURLKey = "updateFeedURL";

// Compares dotted versions part by part as numbers ("1.10" > "1.9", "2" == "2.0"); a part's
// leading digits count and the rest of it is ignored ("3rc1" counts as 3). Negative, zero or
// positive like strcmp.
int compareVersions(const std::string& a, const std::string& b);

// The newest release of the feed that is newer than `current`, or nothing.
std::optional<Release> newerRelease(const std::vector<Release>& feed, const std::string& current);

// The alert shown when the user asked and nothing newer exists.
inline constexpr const char* upToDateTitle = "You\u2019re up to date!";
std::string upToDateText(const std::string& current);

// The alert that offers a newer release.
std::string newerTitle(const Release& release);
std::string newerText(const Release& release, const std::string& current);
inline constexpr const char* openPageButton = "Open Download Page";
inline constexpr const char* laterButton = "Later";

}  // namespace zd::SoftwareUpdate
