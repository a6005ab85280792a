#pragma once
// The platform's own software updater, where the program was built with one (Sparkle on macOS,
// with its standard interface and no delegate). Where there is none, both calls answer false
// and the application's own checker serves instead.

namespace zd::SystemUpdater {

// Starts the updater at launch, so that its scheduled checks run. False without one.
bool start();
// The "Check for Updates…" command. False without one.
bool checkForUpdates();

}  // namespace zd::SystemUpdater
