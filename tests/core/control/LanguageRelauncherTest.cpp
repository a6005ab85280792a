#include "control/LanguageRelauncher.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "model/Geometry.h"  // before the window list fake, which uses Rect
#include "testing/FakeLanguageOverrideBackend.h"
#include "testing/FakeProcessBackend.h"
#include "testing/FakeWindowListBackend.h"
#include "testing/ManualClock.h"

namespace zd {
namespace {

using namespace std::chrono_literals;
using LanguageRelauncher::Failure;
using Result = Expected<CaptureTarget, Failure>;
using Log = std::vector<std::string>;

const std::string bundle = "org.example.Editor";

RunningApplication app(std::int32_t pid, int launchedAtSecond) {
    return {.pid = pid,
            .bundleIdentifier = bundle,
            .localizedName = "Editor",
            .launchDate =
                std::chrono::system_clock::time_point(std::chrono::seconds(launchedAtSecond))};
}

Task<void> keep(Task<Result> task, std::optional<Result>& out) {
    out.emplace(co_await std::move(task));
}

// A machine with one editor (pid 10) whose relaunch starts pid 20 with a window.
struct RelaunchTest : ::testing::Test {
    testing::ManualClock clock;
    testing::InlineWorkerPool workers;
    testing::FakeProcessBackend processes;
    testing::FakeLanguageOverrideBackend overrides;
    testing::FakeWindowListBackend windows;
    Log log;
    ValueArray onScreen;

    RelaunchTest() {
        processes.log = &log;
        overrides.log = &log;
        clock.onCallAfter = [this](Nanos d) {
            log.push_back("sleep " + std::to_string(d.count() / 1'000'000) + "ms");
        };
        processes.add(app(10, 100));
        processes.locations[bundle] = "/apps/editor";
        processes.onLaunch = [this](const LaunchRequest&) -> Expected<std::int32_t, std::string> {
            processes.add(app(20, 200));
            addWindow(7, 20, 800, 600);
            return std::int32_t{20};
        };
    }

    Environment env() {
        return {.clock = &clock,
                .workers = &workers,
                .windowList = &windows,
                .processes = &processes,
                .languageOverride = &overrides};
    }
    void addWindow(std::uint32_t number, std::int32_t pid, double w, double h) {
        onScreen.push_back(testing::windowRecord(number, pid, "Editor", "Untitled", {0, 0, w, h}));
        windows.setWindows(onScreen);
    }
    CaptureTarget target(std::optional<std::string> id = bundle) {
        return {.id = 3, .appName = "Editor", .pid = 10, .bundleId = std::move(id)};
    }
    std::optional<Result> run(CaptureTarget t, double timeout = 12.0) {
        std::optional<Result> out;
        spawn(keep(LanguageRelauncher::relaunch(env(), std::move(t), "de", 1.2, timeout), out));
        EXPECT_TRUE(clock.runUntilIdle());
        return out;
    }
    bool revert() {
        bool done = false;
        spawn([](Environment e, bool& d) -> Task<void> {
            co_await LanguageRelauncher::revertToOriginalLanguage(e, bundle);
            d = true;
        }(env(), done));
        return clock.runUntilIdle() && done;
    }
    static std::size_t count(const Log& log, const std::string& entry) {
        return static_cast<std::size_t>(std::count(log.begin(), log.end(), entry));
    }
};

TEST_F(RelaunchTest, EndsWritesLaunchesSettlesAndReturnsTheNewWindow) {
    const auto result = run(target());
    ASSERT_TRUE(result && *result);
    EXPECT_EQ(std::tuple((*result)->id, (*result)->pid, (*result)->bundleId),
              std::tuple(7u, 20, std::optional(bundle)));
    EXPECT_EQ(log,
              (Log{"terminate 10", "defaults write org.example.Editor AppleLanguages -array de",
                   "defaults write org.example.Editor AppleLocale -string de",
                   "defaults read org.example.Editor AppleLanguages", "sleep 150ms",
                   "launch /apps/editor -AppleLanguages (de) -AppleLocale de", "sleep 1200ms"}));
    EXPECT_TRUE(processes.launches.at(0).activates);
    EXPECT_EQ(clock.now(), 1350ms);
}

TEST_F(RelaunchTest, EmptyOrMissingIdentityFailsBeforeTouchingAnything) {
    for (auto id : {std::optional<std::string>(), std::optional<std::string>("")}) {
        const auto result = run(target(id));
        ASSERT_TRUE(result && !*result);
        EXPECT_EQ(result->error(), Failure::missingBundleID());
    }
    EXPECT_TRUE(log.empty());
    EXPECT_TRUE(processes.runningApplication(10));
}

TEST_F(RelaunchTest, TargetThatAlreadyQuitIsNotSignalledAndTheSequenceGoesOn) {
    processes.apps.clear();
    const auto result = run(target());
    ASSERT_TRUE(result && *result);
    EXPECT_EQ(count(processes.calls, "terminate 10"), 0u);
    EXPECT_EQ(log.front(), "defaults write org.example.Editor AppleLanguages -array de");
}

TEST_F(RelaunchTest, TargetThatRefusesToQuitIsForcedAfterFourSeconds) {
    processes.refusesToQuit.insert(10);
    const auto result = run(target());
    ASSERT_TRUE(result && *result);
    const auto force = std::find(log.begin(), log.end(), "forceTerminate 10");
    ASSERT_NE(force, log.end());
    // Polled every 0.15 s until the four seconds were up: 27 polls, then the kill and its pause.
    EXPECT_EQ(count(Log(log.begin(), force), "sleep 150ms"), 27u);
    EXPECT_EQ(Log(force + 1, force + 3),
              (Log{"sleep 400ms", "defaults write org.example.Editor AppleLanguages -array de"}));
}

TEST_F(RelaunchTest, AnotherInstanceUsesUpTheTwoSecondsAndTheNewestInstanceIsTriedFirst) {
    processes.add(app(11, 50));  // older instance, stays running
    addWindow(5, 11, 800, 600);
    const auto result = run(target());
    ASSERT_TRUE(result && *result);
    EXPECT_EQ(count(processes.calls, "terminate 11"), 0u);
    const auto write = std::find(log.begin(), log.end(),
                                 "defaults write org.example.Editor AppleLanguages -array de");
    EXPECT_EQ(count(Log(log.begin(), write), "sleep 150ms"), 14u);
    EXPECT_EQ((*result)->pid, 20);
    EXPECT_EQ((*result)->id, 7u);
}

TEST_F(RelaunchTest, SplashWindowDoesNotCountButAnOlderInstancesWindowDoes) {
    processes.add(app(11, 50));
    addWindow(5, 11, 200, 100);  // exactly big enough
    processes.onLaunch = [this](const LaunchRequest&) -> Expected<std::int32_t, std::string> {
        processes.add(app(20, 200));
        addWindow(8, 20, 150, 80);
        return std::int32_t{20};
    };
    const auto result = run(target());
    ASSERT_TRUE(result && *result);
    EXPECT_EQ((*result)->id, 5u);
    EXPECT_EQ((*result)->pid, 11);
}

TEST_F(RelaunchTest, NoWindowBeforeTheDeadlineTimesOutCountedFromAfterTheSettleDelay) {
    processes.onLaunch = [](const LaunchRequest&) {
        return Expected<std::int32_t, std::string>(0);
    };
    const auto result = run(target());
    ASSERT_TRUE(result && !*result);
    EXPECT_EQ(result->error(), Failure::timedOut());
    EXPECT_EQ(count(log, "sleep 250ms"), 48u);
    EXPECT_EQ(clock.now(), 150ms + 1200ms + 12s);

    // A time-out of zero fails without looking for a window at all.
    windows.requests.clear();
    const auto none = run(target(), 0.0);
    ASSERT_TRUE(none && !*none);
    EXPECT_EQ(none->error(), Failure::timedOut());
    EXPECT_TRUE(windows.requests.empty());
}

TEST_F(RelaunchTest, UnresolvableApplicationFailsAfterEndingAndWriting) {
    processes.locations.clear();
    const auto result = run(target());
    ASSERT_TRUE(result && !*result);
    EXPECT_EQ(result->error(),
              Failure::relaunchFailed("Couldn't resolve org.example.Editor on disk"));
    EXPECT_EQ(count(log, "terminate 10"), 1u);
    EXPECT_EQ(overrides.runs.size(), 3u);
    EXPECT_TRUE(processes.launches.empty());
}

TEST_F(RelaunchTest, LaunchThatCannotStartFailsWithTheSystemsWords) {
    processes.onLaunch = [](const LaunchRequest&) {
        return Expected<std::int32_t, std::string>(unexpected(std::string("No such file")));
    };
    const auto result = run(target());
    ASSERT_TRUE(result && !*result);
    EXPECT_EQ(result->error(), Failure::relaunchFailed("open failed: No such file"));
}

TEST_F(RelaunchTest, CancellationDoesNotCutTheSequenceShort) {
    processes.refusesToQuit.insert(10);
    std::optional<Result> out;
    auto handle = spawn(keep(LanguageRelauncher::relaunch(env(), target(), "de", 1.2, 12.0), out));
    clock.advance(1s);
    handle.cancel();
    ASSERT_TRUE(clock.runUntilIdle());
    ASSERT_TRUE(out && *out);
    EXPECT_EQ(count(log, "forceTerminate 10"), 1u);
    EXPECT_GE(clock.now(), 4s);
}

TEST_F(RelaunchTest, RevertClearsTheKeysEndsEveryInstanceAndStartsInTheBackground) {
    processes.add(app(11, 50));
    processes.refusesToQuit.insert(11);
    ASSERT_TRUE(revert());
    EXPECT_EQ(
        Log(log.begin(), log.begin() + 4),
        (Log{"defaults delete org.example.Editor AppleLanguages",
             "defaults delete org.example.Editor AppleLocale", "terminate 10", "terminate 11"}));
    EXPECT_EQ(count(log, "sleep 150ms"), 27u);
    EXPECT_EQ(log.at(log.size() - 2), "forceTerminate 11");
    EXPECT_EQ(log.back(), "launch /apps/editor (background)");
    EXPECT_TRUE(processes.launches.back().createsNewInstance);
}

TEST_F(RelaunchTest, RevertOfAnApplicationGoneFromDiskStillClearsAndEnds) {
    processes.locations.clear();
    ASSERT_TRUE(revert());
    EXPECT_EQ(overrides.runs.size(), 2u);
    EXPECT_EQ(count(log, "terminate 10"), 1u);
    EXPECT_TRUE(processes.launches.empty());
}

TEST(LanguageRelauncher, FirstQualifyingWindowTestsEveryKeyInOrder) {
    using testing::windowRecord;
    auto without = [](Value v, const char* key) {
        auto d = *v.asDictionary();
        d.erase(key);
        return Value(d);
    };
    auto with = [](Value v, const char* key, Value value) {
        auto d = *v.asDictionary();
        d[key] = std::move(value);
        return Value(d);
    };
    const Value good = windowRecord(9, 42, "Editor", "Doc", {0, 0, 200, 100});
    struct Case {
        Value entry;
        bool taken;
    };
    const std::vector<Case> cases{
        {good, true},
        {windowRecord(9, 42, "Editor", "Doc", {0, 0, 199, 500}), false},
        {windowRecord(9, 42, "Editor", "Doc", {0, 0, 500, 99}), false},
        {windowRecord(9, 42, "Editor", "Doc", {0, 0, 500, 500}, 3), false},
        {windowRecord(9, 43, "Editor", "Doc", {0, 0, 500, 500}), false},
        {without(good, WindowKey::bounds), true},
        {with(good, WindowKey::bounds, "oops"), true},
        {with(good, WindowKey::bounds, ValueDictionary{{"Width", 500}}), false},
        {without(good, WindowKey::layer), false},
        {with(good, WindowKey::layer, 0.0), false},
        {with(good, WindowKey::number, -1), false},
        {with(good, WindowKey::number, std::int64_t{1} << 33), false},
        {with(good, WindowKey::ownerName, 5), false},
    };
    for (std::size_t i = 0; i < cases.size(); ++i) {
        const auto found =
            LanguageRelauncher::firstQualifyingWindow(ValueArray{cases[i].entry}, 42);
        EXPECT_EQ(found.has_value(), cases[i].taken) << "case " << i;
    }
    const auto untitled =
        LanguageRelauncher::firstQualifyingWindow(ValueArray{without(good, WindowKey::name)}, 42);
    ASSERT_TRUE(untitled);
    EXPECT_EQ(untitled->title, "");
    EXPECT_EQ(untitled->appName, "Editor");
    EXPECT_FALSE(LanguageRelauncher::firstQualifyingWindow(Value(), 42));
    EXPECT_FALSE(LanguageRelauncher::firstQualifyingWindow(ValueArray{good, Value(3)}, 42));
}

TEST(LanguageRelauncher, CurrentLanguageCodeReadsTheOverrideOrFallsBack) {
    testing::FakeLanguageOverrideBackend overrides;
    const std::string read = "read org.example.Editor AppleLanguages";
    overrides.preferred = {"fr-CA", "en"};
    struct Case {
        std::optional<ToolResult> answer;
        std::string code;
    };
    const std::vector<Case> cases{
        {ToolResult{0, "(\n    de\n)\n"}, "de"},
        {ToolResult{0, "(\n    \"zh-Hans\"\n)\n"}, "zh-Hans"},
        {ToolResult{0, "(\n    \"en-GB\",\n    fr\n)\n"}, "en-GB"},
        {ToolResult{0, "(\n    deutsch\n)\n"}, "deu"},
        {ToolResult{0, "(\n)\n"}, "fr-CA"},
        {ToolResult{1, "(\n    de\n)\n"}, "fr-CA"},
        {ToolResult{0, "(\n    de\xff\n)\n"}, "fr-CA"},
        {std::nullopt, "fr-CA"},
    };
    for (const auto& c : cases) {
        overrides.toolMissing = !c.answer;
        if (c.answer)
            overrides.answers[read] = *c.answer;
        EXPECT_EQ(LanguageRelauncher::currentLanguageCode(overrides, "org.example.Editor"), c.code);
    }
    overrides.preferred.clear();
    overrides.toolMissing = true;
    EXPECT_EQ(LanguageRelauncher::currentLanguageCode(overrides, "org.example.Editor"), "en");
}

TEST(LanguageRelauncher, MatchesLanguageWhenOneIsARegionalFormOfTheOther) {
    struct Case {
        const char* a;
        const char* b;
        bool match;
    };
    for (const auto& c :
         {Case{"en", "en", true}, Case{"en", "en-GB", true}, Case{"EN-gb", "en", true},
          Case{"pt", "pt-BR", true}, Case{"pt-PT", "pt-BR", false}, Case{"en-GB", "en-US", false},
          Case{"zh", "zhx", false}, Case{"zh-Hans", "zh-hans-CN", true}, Case{"", "en", false},
          Case{"", "", true}}) {
        EXPECT_EQ(LanguageRelauncher::matchesLanguage(c.a, c.b), c.match) << c.a << " " << c.b;
        EXPECT_EQ(LanguageRelauncher::matchesLanguage(c.b, c.a), c.match) << c.b << " " << c.a;
    }
}

}  // namespace
}  // namespace zd
