#include "app/SoftwareUpdate.h"

#include <cctype>
#include <cstddef>

namespace zd::SoftwareUpdate {
namespace {

// The numbers of a dotted version: each part's leading digits, 0 where there are none.
std::vector<unsigned long long> partsOf(const std::string& version) {
    std::vector<unsigned long long> parts;
    std::size_t i = 0;
    while (i <= version.size()) {
        unsigned long long number = 0;
        bool inDigits = true;
        while (i < version.size() && version[i] != '.') {
            const auto c = static_cast<unsigned char>(version[i]);
            if (inDigits && std::isdigit(c) && number < 1'000'000'000'000ULL)
                number = number * 10 + (c - '0');
            else
                inDigits = false;
            ++i;
        }
        parts.push_back(number);
        ++i;
    }
    while (!parts.empty() && parts.back() == 0)
        parts.pop_back();
    return parts;
}

}  // namespace

int compareVersions(const std::string& a, const std::string& b) {
    const auto pa = partsOf(a);
    const auto pb = partsOf(b);
    for (std::size_t i = 0; i < pa.size() || i < pb.size(); ++i) {
        const auto x = i < pa.size() ? pa[i] : 0;
        const auto y = i < pb.size() ? pb[i] : 0;
        if (x != y)
            return x < y ? -1 : 1;
    }
    return 0;
}

std::optional<Release> newerRelease(const std::vector<Release>& feed, const std::string& current) {
    std::optional<Release> best;
    for (const auto& release : feed) {
        if (release.version.empty() || compareVersions(release.version, current) <= 0)
            continue;
        if (!best || compareVersions(release.version, best->version) > 0)
            best = release;
    }
    if (best && best->displayVersion.empty())
        best->displayVersion = best->version;
    return best;
}

std::string upToDateText(const std::string& current) {
    return "Zephyrdock " + current + " is currently the newest version available.";
}

std::string newerTitle(const Release& release) {
    return "Zephyrdock " + release.displayVersion + " is available";
}

std::string newerText(const Release& release, const std::string& current) {
    return "Zephyrdock " + release.displayVersion + " is now available \u2014 you have " + current +
           ". Would you like to open its download page?";
}

}  // namespace zd::SoftwareUpdate
