// A real GTK application relaunched in German, French and Japanese inside the headless
// session, then reverted to its own language.

#include <gtest/gtest.h>

#include <cstdlib>

#include "control/LanguageRelauncher.h"
#include "linux/LanguageOverrideStore.h"
#include "linux/ProcProcessBackend.h"
#include "support/ControlProbe.h"
#include "support/SessionFixture.h"

namespace zd {
namespace {

using namespace std::chrono_literals;
using LanguageRelauncher::Failure;
using Result = Expected<CaptureTarget, Failure>;

class LanguageRelaunchInSession : public testing::SessionTest {
  protected:
    void SetUp() override {
        SessionTest::SetUp();
        // The application's own language is English.
        setenv("LANG", "en_US.UTF-8", 1);
        unsetenv("LC_ALL");
        unsetenv("LANGUAGE");
        unsetenv("LC_MESSAGES");
        x11::ProcProcessBackend::Options options;
        options.display = session().display();
        processes = std::make_unique<x11::ProcProcessBackend>(options);
        overrides =
            std::make_unique<x11::LanguageOverrideStore>(session().directory() / "overrides");
        env.clock = &clock;
        env.workers = &workers;
        env.processes = processes.get();
        env.languageOverride = overrides.get();
        env.windowList = &windows;
    }
    void TearDown() override {
        // Every instance this test started, each by its own pid.
        for (const auto& app : processes->runningApplications(bundle)) {
            processes->forceTerminate(app.pid);
        }
    }

    std::string titleOf(std::uint32_t window) {
        for (const auto& w : testing::probeWindows()) {
            if (w.id == window)
                return w.title;
        }
        return {};
    }
    // Waits (in real time) until the window's title holds `text`.
    bool titleShows(std::uint32_t window, const std::string& text) {
        return testing::waitFor([&] { return titleOf(window).find(text) != std::string::npos; },
                                5s);
    }
    Result relaunch(const CaptureTarget& target, const std::string& code) {
        std::optional<Result> out;
        spawn([](Task<Result> t, std::optional<Result>& o) -> Task<void> {
            o.emplace(co_await std::move(t));
        }(LanguageRelauncher::relaunch(env, target, code, 1.2, 12.0), out));
        EXPECT_TRUE(testing::followRealTime(
            clock, [&] { return out.has_value(); }, 40s));
        if (!out)
            return unexpected(Failure::timedOut());
        return std::move(*out);
    }

    const std::string bundle = "org.gnome.gedit";
    testing::ManualClock clock;
    testing::InlineWorkerPool workers;
    testing::ProbeWindowList windows;
    std::unique_ptr<x11::ProcProcessBackend> processes;
    std::unique_ptr<x11::LanguageOverrideStore> overrides;
    Environment env;
};

TEST_F(LanguageRelaunchInSession, GeditComesBackInEachLanguageThenInItsOwn) {
    // Started ignoring SIGTERM: the first relaunch has to force it after four seconds.
    auto original = launchApp({"sh", "-c", "trap '' TERM; exec gedit"});
    ASSERT_TRUE(original);
    std::optional<CaptureTarget> target;
    ASSERT_TRUE(testing::waitFor([&] {
        target = LanguageRelauncher::firstWindow(env, original->pid());
        return target.has_value();
    }));
    ASSERT_EQ(target->bundleId, bundle);
    EXPECT_TRUE(titleShows(target->id, "Untitled Document"));

    const auto start = clock.now();
    auto german = relaunch(*target, "de");
    ASSERT_TRUE(german) << static_cast<int>(german.error().kind) << german.error().message;
    EXPECT_GE(clock.now() - start, 4s + 400ms + 1200ms);
    EXPECT_NE(german->pid, original->pid());
    EXPECT_TRUE(titleShows(german->id, "Ungespeichertes Dokument")) << titleOf(german->id);
    EXPECT_EQ(LanguageRelauncher::currentLanguageCode(*overrides, bundle), "de");

    auto french = relaunch(*german, "fr");
    ASSERT_TRUE(french);
    EXPECT_TRUE(titleShows(french->id, "sans titre")) << titleOf(french->id);

    auto japanese = relaunch(*french, "ja");
    ASSERT_TRUE(japanese);
    EXPECT_TRUE(titleShows(japanese->id, "無題のドキュメント")) << titleOf(japanese->id);

    bool reverted = false;
    spawn([](Environment e, std::string id, bool& done) -> Task<void> {
        co_await LanguageRelauncher::revertToOriginalLanguage(e, id);
        done = true;
    }(env, bundle, reverted));
    ASSERT_TRUE(testing::followRealTime(
        clock, [&] { return reverted; }, 20s));
    EXPECT_FALSE(processes->runningApplication(japanese->pid));
    std::optional<CaptureTarget> own;
    ASSERT_TRUE(testing::waitFor([&] {
        for (const auto& app : processes->runningApplications(bundle)) {
            own = LanguageRelauncher::firstWindow(env, app.pid);
            if (own)
                return true;
        }
        return false;
    }));
    EXPECT_TRUE(titleShows(own->id, "Untitled Document")) << titleOf(own->id);
    EXPECT_NE(overrides->runDefaults({"read", bundle, "AppleLanguages"})->exitStatus, 0);
    EXPECT_FALSE(std::filesystem::exists(overrides->folder() / bundle));
}

}  // namespace
}  // namespace zd
