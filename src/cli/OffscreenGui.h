#pragma once
// The Qt application object the command line draws with: fonts and pictures need a
// QGuiApplication, and the run's clock needs its event loop. It draws offscreen, never on the
// display being captured, and leaves the environment of launched programs untouched.

#include <chrono>
#include <functional>

namespace zd::cli {

// Creates the application object on first use; later calls do nothing.
void ensureOffscreenGui();

// Handles Qt events (the run's timers and workers' results) until `done` holds; false when
// `limit` passed first.
bool processEventsUntil(const std::function<bool()>& done, std::chrono::milliseconds limit);

}  // namespace zd::cli
