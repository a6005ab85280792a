#pragma once
// The sessions of a parallel run at work: started, watched (their progress shown a line per
// change, "[2/3] Switching gedit to German (1/2)…"), all stopped on a stop or on the first
// failure and waited for, and once every one has saved, their pictures merged into one run
// folder under the save folder. A staging folder of its own holds what the sessions save and
// goes on every way out.

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <ostream>
#include <vector>

#include "ParallelShoot.h"

namespace zd {
class ContentView;
}

namespace zd::cli {

struct Session;

class ParallelRunner {
  public:
    // `view` holds the run's settings, flags applied.
    ParallelRunner(Context& context, const ShootArguments& args, ContentView& view);
    ~ParallelRunner();
    ParallelRunner(const ParallelRunner&) = delete;
    ParallelRunner& operator=(const ParallelRunner&) = delete;

    // The exit code of the whole run over `count` sessions.
    int run(const std::filesystem::path& saveFolder, int count);

  private:
    bool start(const std::filesystem::path& staging, int count);
    void watch();
    void take(std::size_t index);
    void show(std::size_t index);
    int finish(const std::filesystem::path& saveFolder);
    void stopAll(std::chrono::steady_clock::time_point now);

    Context& context_;
    const ShootArguments& args_;
    ContentView& view_;
    std::ostream& err_;
    std::vector<Session> sessions_;
    bool stopped_ = false;
    std::optional<std::size_t> failed_;
    std::optional<std::chrono::steady_clock::time_point> killAt_;
};

}  // namespace zd::cli
