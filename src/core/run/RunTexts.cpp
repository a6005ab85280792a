#include "run/RunTexts.h"

namespace zd::RunTexts {

namespace {
std::string counted(int n, const std::string& noun) {
    return std::to_string(n) + " " + noun + (n == 1 ? "" : "s");
}
std::string ofN(int i, int n) {
    return " (" + std::to_string(i) + "/" + std::to_string(n) + ")";
}
}  // namespace

std::string shotCount(int n) {
    return counted(n, "shot");
}
std::string windowCount(int n) {
    return counted(n, "window");
}

std::string capturingLanguage(const std::string& label, int i, int n) {
    return "Capturing " + label + ofN(i, n) + "\u2026";
}

std::string switchingLanguage(const std::string& appName, const std::string& label, int i, int n) {
    return "Switching " + appName + " to " + label + ofN(i, n) + "\u2026";
}

std::string capturingLabel(const std::string& label) {
    return "Capturing " + label + "\u2026";
}

std::string countdownStatus(const std::string& prefix, const std::string& name) {
    return prefix + " " + name + " \u2014 capturing in\u2026";
}

std::string capturingBothAppearances(const std::string& label) {
    return "Capturing light + dark for " + label + "\u2026";
}

std::string capturingOneAppearance(const std::string& mode, const std::string& label) {
    return "Capturing " + mode + " for " + label + "\u2026";
}

std::string stoppedWithShots(int collected) {
    return "Stopped \u2014 " + shotCount(collected) + " captured but not saved.";
}

std::string missingBundleID(const std::string& appName) {
    return "Couldn't switch language \u2014 " + appName + " has no bundle ID.";
}

std::string saveFailed(const std::string& localizedDescription) {
    return "Save failed: " + localizedDescription;
}

std::string saved(int n, const std::string& path) {
    return "Saved " + shotCount(n) + " to " + path + ".";
}

std::string didNotFollowDark(const std::string& appName) {
    return appName + " did not follow the switch to Dark";
}

std::string savedWithNotFollowing(int n, const std::string& path,
                                  const std::vector<std::string>& appNames) {
    std::string text = saved(n, path);
    for (const auto& name : appNames)
        text += " " + didNotFollowDark(name) + ".";
    return text;
}

std::string saveFolderChosen(const std::string& path) {
    return "Save folder: " + path;
}

std::string captureFailure(const RunError& error, HostPlatform platform) {
    const bool x11 = platform == HostPlatform::x11;
    if (const auto* capture = std::get_if<CaptureFailure>(&error);
        capture && capture->is(CaptureError::permissionDenied)) {
        // On X11 nothing asks for permission: the window list fails only without Composite.
        if (x11) {
            return "Can't read windows off the screen \u2014 the X server needs the Composite "
                   "extension.";
        }
        return "Screen Recording permission needed \u2014 System Settings \u2192 Privacy & "
               "Security.";
    }
    if (const auto* appearance = std::get_if<AppearanceController::Failure>(&error);
        appearance && appearance->kind == AppearanceController::Failure::Kind::automationDenied) {
        if (x11) {
            return "Couldn't toggle Dark Mode \u2014 gsettings couldn't change the desktop's "
                   "colour "
                   "scheme; check the session's D-Bus, then retry.";
        }
        return "Couldn't toggle Dark Mode \u2014 grant Zephyrdock access to System Events in "
               "Privacy & Security \u2192 Automation, then retry.";
    }
    if (const auto* relaunch = std::get_if<LanguageRelauncher::Failure>(&error)) {
        using Kind = LanguageRelauncher::Failure::Kind;
        if (relaunch->kind == Kind::relaunchFailed) {
            return "Couldn't relaunch target: " + relaunch->message;
        }
        if (relaunch->kind == Kind::timedOut) {
            return "Target app didn't surface a window after relaunch \u2014 try a longer "
                   "countdown or retry.";
        }
    }
    return "Capture failed: " + localizedDescription(error);
}

}  // namespace zd::RunTexts
