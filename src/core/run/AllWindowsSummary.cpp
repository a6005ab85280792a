#include "run/AllWindowsSummary.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <set>

namespace zd {

namespace {

// A frame's coordinate cut towards zero; a value that isn't a number prints as 0.
std::string truncated(double value) {
    double whole = std::isfinite(value) ? std::trunc(value) : 0.0;
    if (whole == 0.0)
        whole = 0.0;  // no "-0"
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%.0f", whole);
    return buffer;
}

std::string outcomeLine(const CaptureEngine::CaptureOutcome& outcome) {
    const char* state = outcome.included ? "captured"
                        : outcome.blank  ? "blank image"
                                         : "capture error";
    return "\u2022 " + outcome.label + "  \u2014  " + state + "  (" + truncated(outcome.frame.x) +
           "," + truncated(outcome.frame.y) + ") " + truncated(outcome.frame.width) + "\u00d7" +
           truncated(outcome.frame.height);
}

}  // namespace

std::string AllWindowsSummary::informativeText() const {
    std::string text;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (i > 0)
            text += "\n";
        text += lines[i];
    }
    return text;
}

std::optional<AllWindowsSummary> makeAllWindowsSummary(
    const CaptureEngine::CaptureRecords& records) {
    const auto& snapshot = records.lastEnabledSnapshot;
    auto outcomes = records.lastCaptureOutcomes;  // each outcome answers one snapshot entry
    const std::set<std::string> missing(records.lastMissingFromLayout.begin(),
                                        records.lastMissingFromLayout.end());

    const auto included = static_cast<int>(std::count_if(
        outcomes.begin(), outcomes.end(), [](const auto& outcome) { return outcome.included; }));
    const auto total = static_cast<int>(snapshot.size());
    if (total <= included)
        return std::nullopt;
    const int dropped = total - included;

    AllWindowsSummary summary;
    summary.headline =
        std::to_string(dropped) + " window" + (dropped == 1 ? "" : "s") + " didn't make it";
    summary.lines.push_back(std::to_string(included) + " of " + std::to_string(total) +
                            " selected windows in output.");
    summary.lines.push_back(
        "Order below is the popover order \u2014 top = front-most in the composite.");
    summary.lines.emplace_back();
    for (const auto& entry : snapshot) {
        auto found = std::find_if(outcomes.begin(), outcomes.end(), [&](const auto& outcome) {
            return outcome.label == entry.label;
        });
        if (found != outcomes.end()) {
            summary.lines.push_back(outcomeLine(*found));
            outcomes.erase(found);
        } else if (missing.count(entry.label) > 0) {
            summary.lines.push_back("\u2022 " + entry.label +
                                    "  \u2014  not in SCShareableContent");
        } else {
            summary.lines.push_back("\u2022 " + entry.label + "  \u2014  dropped (unknown stage)");
        }
    }
    summary.lines.emplace_back();
    summary.lines.push_back(
        "ScreenCaptureKit can refuse to share windows that live on another Mission Control "
        "space, are minimised, or belong to apps that have opted out of screen sharing. Move "
        "the window to the active desktop and re-Take.");
    return summary;
}

}  // namespace zd
