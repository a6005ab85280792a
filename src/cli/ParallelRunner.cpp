#include "ParallelRunner.h"

#include <poll.h>
#include <stdlib.h>

#include <deque>
#include <set>
#include <thread>

#include "CliSupport.h"
#include "ConsoleDialogBackend.h"
#include "ContactSheet.h"
#include "SessionProcess.h"
#include "SessionReport.h"
#include "StopRequest.h"
#include "run/ParallelRun.h"
#include "run/RunOutput.h"
#include "run/RunTexts.h"
#include "ui/ContentView.h"

namespace zd::cli {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

// What the run knows of one session.
struct Session {
    SessionProcess process;
    std::vector<LanguageSelection> languages;
    int completed = 0;
    int countdown = 0;
    std::string headline;
    std::string status;
    std::string appName;
    std::string savedRoot;
    std::vector<std::string> notFollowingDark;
    std::deque<std::string> errors;  // the last lines of its stderr
    std::string shown;
};

namespace {

// A stopped session cleans up within seconds (its target's language is put back, its display
// ended); one that hasn't after this long is killed, and its display's helpers go with it.
constexpr auto kStopLimit = 90s;

// The command of one session: this program, headless, reporting on its stdout, saving into its
// own staging folder, with the run's flags that change the pictures.
std::vector<std::string> sessionArguments(const Context& context, const ShootArguments& args,
                                          const std::vector<LanguageSelection>& languages,
                                          const fs::path& staging) {
    std::error_code ec;
    const fs::path self = fs::read_symlink("/proc/self/exe", ec);
    std::vector<std::string> words{ec ? std::string("zephyrdock") : self.string()};
    if (context.settingsFile)
        words.insert(words.end(), {"--settings-file", *context.settingsFile});
    words.insert(words.end(), {"shoot", "--headless", "--session-report", "--launch", args.launch,
                               "--destination", "new", "--save-folder", staging.string()});
    words.emplace_back("--languages");
    for (const auto& language : languages)
        words.push_back(language.code);
    const RunOverrides& o = args.overrides;
    auto add = [&words](const std::string& flag, const std::string& value) {
        if (!value.empty())
            words.insert(words.end(), {flag, value});
    };
    auto addBool = [&](const std::string& flag, const std::optional<bool>& value) {
        if (value)
            add(flag, *value ? "true" : "false");
    };
    if (!o.appearances.empty()) {
        words.emplace_back("--appearances");
        words.insert(words.end(), o.appearances.begin(), o.appearances.end());
    }
    add("--size", o.sizePreset);
    add("--canvas", o.canvas);
    if (o.countdown)
        add("--countdown", std::to_string(*o.countdown));
    if (o.countdownAfterRelaunch)
        words.push_back(std::string("--countdown-after-relaunch=") +
                        (*o.countdownAfterRelaunch ? "true" : "false"));
    addBool("--shadow", o.shadow);
    add("--background", o.background);
    add("--background-color", o.backgroundColor);
    add("--background-image", o.backgroundImage.empty() ? "" : absolutePath(o.backgroundImage));
    addBool("--menu-bar", o.menuBar);
    addBool("--menu-bar-background", o.menuBarBackground);
    add("--clock", o.clock);
    if (o.battery)
        add("--battery", std::to_string(*o.battery));
    if (!o.hide.empty()) {
        words.emplace_back("--hide");
        words.insert(words.end(), o.hide.begin(), o.hide.end());
    }
    if (o.realAccessories)
        words.emplace_back("--real-accessories");
    add("--store", o.storeName);
    return words;
}

// The staging folder, removed on every way out.
struct StagingFolder {
    fs::path path;
    ~StagingFolder() {
        std::error_code ignored;
        if (!path.empty())
            fs::remove_all(path, ignored);
    }
};

}  // namespace

ParallelRunner::ParallelRunner(Context& context, const ShootArguments& args, ContentView& view)
    : context_(context), args_(args), view_(view), err_(*context.err) {}

ParallelRunner::~ParallelRunner() = default;

bool ParallelRunner::start(const fs::path& staging, int count) {
    const auto parts = ParallelRun::splitLanguages(view_.languages, count);
    err_ << "Shooting " << view_.languages.size() << " languages in " << parts.size()
         << " private sessions at once\n";
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const fs::path folder = staging / std::to_string(i + 1);
        std::error_code ec;
        fs::create_directories(folder, ec);
        if (ec) {
            err_ << "zephyrdock shoot: cannot make " << folder.string() << ": " << ec.message()
                 << "\n";
            return false;
        }
        auto process = SessionProcess::start(sessionArguments(context_, args_, parts[i], folder));
        if (!process) {
            err_ << "zephyrdock shoot: " << process.error() << "\n";
            return false;
        }
        sessions_.push_back({std::move(*process), parts[i]});
    }
    return true;
}

void ParallelRunner::stopAll(std::chrono::steady_clock::time_point now) {
    for (auto& session : sessions_)
        session.process.stop();
    if (!killAt_)
        killAt_ = now + kStopLimit;
}

void ParallelRunner::show(std::size_t index) {
    Session& session = sessions_[index];
    if (stopped_ && session.countdown >= 1)
        return;  // a countdown races down at once after a stop: its numbers aren't news
    std::string line = "[" + std::to_string(index + 1) + "/" + std::to_string(sessions_.size()) +
                       "] " + session.headline;
    if (session.countdown >= 1)
        line += "  [" + std::to_string(session.countdown) + "]";
    const std::string key = line + "\t" + std::to_string(session.completed);
    if (key == session.shown)
        return;
    session.shown = key;
    int completed = 0;
    for (const auto& s : sessions_)
        completed += s.completed;
    const int total = view_.plannedShotCount();  // all sessions' shots, known from the start
    if (total >= 1)
        line += "  " + std::to_string(completed) + "/" + std::to_string(total);
    err_ << line << std::endl;
}

void ParallelRunner::take(std::size_t index) {
    Session& session = sessions_[index];
    for (const auto& text : session.process.takeOutputLines()) {
        const auto line = SessionReport::parse(text);
        if (!line || line->fields.empty())
            continue;
        const auto& f = line->fields;
        if (line->kind == "progress" && f.size() >= 4) {
            session.completed = std::atoi(f[0].c_str());
            session.countdown = std::atoi(f[2].c_str());
            session.headline = f[3];
            show(index);
        } else if (line->kind == "status") {
            session.status = f[0];
        } else if (line->kind == "app") {
            session.appName = f[0];
        } else if (line->kind == "notdark") {
            session.notFollowingDark.push_back(f[0]);
        } else if (line->kind == "saved") {
            session.savedRoot = f[0];
        }
    }
    for (auto& text : session.process.takeErrorLines()) {
        session.errors.push_back(std::move(text));
        if (session.errors.size() > 20)
            session.errors.pop_front();
    }
}

void ParallelRunner::watch() {
    StopRequest stop;
    for (;;) {
        std::vector<pollfd> waiting;
        for (const auto& session : sessions_)
            for (int fd : session.process.descriptors())
                waiting.push_back({fd, POLLIN, 0});
        if (!waiting.empty())
            ::poll(waiting.data(), waiting.size(), 100);
        else
            std::this_thread::sleep_for(100ms);
        const auto now = std::chrono::steady_clock::now();
        bool running = false;
        for (std::size_t i = 0; i < sessions_.size(); ++i) {
            Session& session = sessions_[i];
            session.process.read();
            const auto code = session.process.poll();
            take(i);
            if (!code) {
                running = true;
            } else if (*code != exitSuccess && !stopped_ && !failed_) {
                // The first failure fails the run; the others are stopped and clean up.
                failed_ = i;
                stopAll(now);
            }
        }
        if (stop.take() && !stopped_ && !failed_) {
            stopped_ = true;
            err_ << RunTexts::stopping << "\n";
            stopAll(now);
        }
        if (!running)
            return;
        if (killAt_ && now > *killAt_) {
            for (auto& session : sessions_)
                session.process.kill();
        }
    }
}

int ParallelRunner::finish(const fs::path& saveFolder) {
    if (stopped_) {
        std::vector<std::string> statuses;
        int captured = 0;
        for (const auto& session : sessions_) {
            statuses.push_back(session.status);
            captured += session.completed;
        }
        err_ << printable(ParallelRun::stopText(statuses, captured)) << "\n";
        return exitStopped;
    }
    for (std::size_t i = 0; i < sessions_.size() && !failed_; ++i) {
        if (sessions_[i].savedRoot.empty())
            failed_ = i;  // ended well without saving: no picture of it can be merged
    }
    if (failed_) {
        const Session& session = sessions_[*failed_];
        if (!session.status.empty()) {
            err_ << session.status << "\n";
        } else {
            // It failed before its run began (no target window, no display): its own words.
            for (const auto& line : session.errors)
                err_ << "[" << *failed_ + 1 << "/" << sessions_.size() << "] " << line << "\n";
        }
        return exitFailure;
    }

    // All sessions saved: one run folder, named when saving begins, as a run names it.
    const std::string word = applicationWord(sessions_.front().appName);
    const std::string stamp = stampString(std::chrono::system_clock::now());
    std::optional<fs::path> lastRoot;
    if (view_.lastRunRoot)
        lastRoot = fs::path(*view_.lastRunRoot);
    else if (view_.destinationMode == DestinationMode::group)
        lastRoot = newestRunFolder(saveFolder, word);
    if (view_.destinationMode == DestinationMode::group && lastRoot)
        err_ << "Joining " << lastRoot->string() << "\n";
    const Destination destination =
        resolveDestination(view_.destinationMode, lastRoot, saveFolder,
                           runFolderName(word, view_.variantName, stamp), view_.variantName);
    std::vector<ParallelRun::StagedPicture> pictures;
    std::set<std::string> notFollowing;
    std::vector<std::string> notFollowingDark;
    for (const auto& session : sessions_) {
        const auto staged = ParallelRun::stagedPictures(session.savedRoot, session.languages);
        pictures.insert(pictures.end(), staged.begin(), staged.end());
        for (const auto& name : session.notFollowingDark)
            if (notFollowing.insert(name).second)
                notFollowingDark.push_back(name);
    }
    auto merged = ParallelRun::mergeInto(pictures, destination.runRoot, destination.variantPrefix);
    if (!merged) {
        err_ << printable(RunTexts::saveFailed(merged.error().localizedDescription))
             << " (saving under " << saveFolder.string() << ")\n";
        return exitFailure;
    }
    const std::string root = destination.runRoot.string();
    err_ << printable(RunTexts::savedWithNotFollowing(static_cast<int>(merged->size()), root,
                                                      notFollowingDark))
         << "\n";
    if (args_.reveal)
        ConsoleDialogBackend(err_, true).revealFolder(root);
    if (args_.contactSheet &&
        !writeContactSheet(destination.runRoot, destination.runRoot.filename().string(),
                           runPictures(destination.runRoot, view_.languages)))
        err_ << "zephyrdock shoot: cannot write " << (destination.runRoot / "index.html") << "\n";
    *context_.out << root << "\n";
    return exitSuccess;
}

int ParallelRunner::run(const fs::path& saveFolder, int count) {
    StagingFolder staging;
    std::string pattern = (fs::temp_directory_path() / "zd-parallel.XXXXXX").string();
    if (!mkdtemp(pattern.data())) {
        err_ << "zephyrdock shoot: cannot make a staging folder in "
             << fs::temp_directory_path().string() << "\n";
        return exitFailure;
    }
    staging.path = pattern;
    if (!start(staging.path, count)) {
        failed_ = sessions_.size();
        stopAll(std::chrono::steady_clock::now());
        watch();
        return exitFailure;
    }
    watch();
    return finish(saveFolder);
}

// Stores the given flags as the sequential run does, with the same words.
}  // namespace zd::cli
