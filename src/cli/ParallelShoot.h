#pragma once
// `zephyrdock shoot --headless --parallel N`: the languages split over N private sessions at
// once, each a `zephyrdock shoot --headless` process of its own with its own display, buses,
// settings, appearance and target, saving into a private staging folder. This process shows
// each session's stage, stops them all on a stop or on the first failure, and once every one
// has succeeded moves their pictures into one run folder named as a run in one session names
// it.

#include <optional>
#include <string>

#include "RunOverrides.h"

namespace zd::cli {

struct Context;

struct ShootArguments {
    RunOverrides overrides;
    std::string target;
    std::string launch;
    bool headless = false;
    bool saveSettings = false;
    bool reveal = false;
    bool contactSheet = false;
    std::optional<int> parallel;  // sessions asked for
    bool sessionReport = false;   // this process is one session of a parallel run
};

// The run in parallel sessions, with its exit code; none when the run takes one session (the
// run on the user's display, one language, …), which is then left to the caller. Usage errors
// about --parallel end here with their message.
std::optional<int> shootInParallel(Context& context, const ShootArguments& args);

// --save-settings: the given options stored as the next runs' settings, with what became of the
// store's file (set aside when unreadable, a failed write) told on the error stream.
void storeGivenSettings(Context& context, const ShootArguments& args, const ContentView& view,
                        SettingsStore& store);

}  // namespace zd::cli
