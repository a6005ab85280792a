#pragma once
// The words of the alert after a multiple-windows run that lost some of its selected windows:
// which windows came through, which came back blank or failed, and which the capture never saw.

#include <optional>
#include <string>
#include <vector>

#include "capture/FullDisplayCapture.h"

namespace zd {

struct AllWindowsSummary {
    std::string headline;            // "{dropped} window{s} didn't make it"
    std::vector<std::string> lines;  // the informative text, one entry per line

    std::string informativeText() const;
};

// Nothing when every selected window is in the output.
std::optional<AllWindowsSummary> makeAllWindowsSummary(
    const CaptureEngine::CaptureRecords& records);

}  // namespace zd
