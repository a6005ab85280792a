#pragma once
// The sentences a run leaves in the progress model, worded once here so that the run, its
// failure paths and the tests agree on every character.

#include <string>
#include <vector>

#include "model/HostPlatform.h"
#include "run/RunError.h"

namespace zd::RunTexts {

// "{n} shot" or "{n} shots".
std::string shotCount(int n);
// "{n} window" or "{n} windows": the label of a multiple-windows pass.
std::string windowCount(int n);

std::string capturingLanguage(const std::string& label, int i, int n);
std::string switchingLanguage(const std::string& appName, const std::string& label, int i, int n);
std::string capturingLabel(const std::string& label);
std::string countdownStatus(const std::string& prefix, const std::string& name);
std::string capturingBothAppearances(const std::string& label);
std::string capturingOneAppearance(const std::string& mode, const std::string& label);

inline const std::string stoppedBeforeCapture = "Stopped before capture started.";
inline const std::string stopping = "Stopping\u2026";
std::string stoppedWithShots(int collected);
std::string missingBundleID(const std::string& appName);
std::string saveFailed(const std::string& localizedDescription);
std::string saved(int n, const std::string& path);
// "{appName} did not follow the switch to Dark": both of its captures show the same window.
std::string didNotFollowDark(const std::string& appName);
// The saved line followed by one sentence for each application that didn't follow.
std::string savedWithNotFollowing(int n, const std::string& path,
                                  const std::vector<std::string>& appNames);
std::string saveFolderChosen(const std::string& path);

// What the user reads for a failure that ends a run (cancellation is worded by the run), in the
// words of the system it runs on.
std::string captureFailure(const RunError& error, HostPlatform platform = HostPlatform::macOS);

}  // namespace zd::RunTexts
