#pragma once
// Software update through Sparkle's standard updater, where the application was built with the
// framework. Without it both calls answer false and the face offers its own checker.

namespace zd::mac::SoftwareUpdater {

// Starts the updater (at launch, so its scheduled checks run). False without Sparkle.
bool start();
// The "Check for Updates…" command. False without Sparkle.
bool checkForUpdates();

}  // namespace zd::mac::SoftwareUpdater
