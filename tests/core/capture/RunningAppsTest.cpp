#include "capture/RunningApps.h"

#include <gtest/gtest.h>

#include "CaptureTestSupport.h"
#include "capture/TargetLists.h"

namespace zd::testing {
namespace {

// One window put through both lists: is it a single target, is it a row?
struct FilterCase {
    const char* name;
    Value record;
    bool isTarget;
    bool isRow;
};

Value with(Value record, const std::string& key, Value v) {
    auto dict = *record.asDictionary();
    if (v.isNull()) {
        dict.erase(key);
    } else {
        dict[key] = std::move(v);
    }
    return dict;
}

const Value kBase = listed(7, 100, "Pad", "Notes");

class WindowFilters : public ::testing::TestWithParam<FilterCase> {};

TEST_P(WindowFilters, DecideBothLists) {
    CaptureFakes fakes;
    fakes.addApp(100, "Pad");
    fakes.addApp(300, "Helper", std::nullopt, ActivationPolicy::accessory);
    fakes.processes.ownPid = 200;
    fakes.windowList.setWindows(ValueArray{GetParam().record});
    auto env = fakes.env();

    EXPECT_EQ(RunningApps::currentTargets(env).size(), GetParam().isTarget ? 1u : 0u);
    EXPECT_EQ(TargetLists::freshCompositeRows(env, 0).size(), GetParam().isRow ? 1u : 0u);
}

Value sized(double w, double h) {
    return windowRecord(7, 100, "Pad", "", {0, 0, w, h});
}
Value layered(int layer) {
    return listed(7, 100, "Pad", "", layer);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(TargetDiscovery, WindowFilters, ::testing::Values(
    FilterCase{"Ordinary", kBase, true, true},
    FilterCase{"Width199IsOnlyARow", sized(199, 500), false, true},
    FilterCase{"Width40IsNeither", sized(40, 500), false, false},
    FilterCase{"Exactly200By100IsATarget", sized(200, 100), true, true},
    FilterCase{"Exactly50By50IsARow", sized(50, 50), false, true},
    FilterCase{"Layer3IsOnlyARow", layered(3), false, true},
    FilterCase{"Layer24", layered(24), false, false},
    FilterCase{"Layer25", layered(25), false, false},
    FilterCase{"LayerMinus1", layered(-1), false, false},
    FilterCase{"LayerAsText", with(kBase, WindowKey::layer, "0"), false, false},
    FilterCase{"OwnWindow", listed(7, 200, "Zephyrdock"), false, false},
    FilterCase{"AccessoryApplication", listed(7, 300, "Helper"), false, false},
    FilterCase{"UnknownProcess", listed(7, 999, "Gone"), false, false},
    FilterCase{"NoOwnerName", with(kBase, WindowKey::ownerName, Value()), false, false},
    FilterCase{"NegativeNumber", with(kBase, WindowKey::number, -1), false, false},
    FilterCase{"PidBeyond32Bits", with(kBase, WindowKey::ownerPID, (std::int64_t{1} << 32) + 100),
               false, false},
    FilterCase{"NumberBeyond32Bits", with(kBase, WindowKey::number, std::int64_t{1} << 32), false,
               false},
    FilterCase{"NoBoundsPasses", with(kBase, WindowKey::bounds, Value()), true, true},
    FilterCase{"BoundsNotNumbersPass", with(kBase, WindowKey::bounds, ValueDictionary{{"Width",
               "wide"}}), true, true},
    FilterCase{"BoundsWithoutHeightFail", with(kBase, WindowKey::bounds, ValueDictionary{{"Width",
               900}}), false, false},
    FilterCase{"TitleOfAnotherTypeIsEmpty", with(kBase, WindowKey::name, 5), true, true}),
    [](const auto& testCase) { return std::string(testCase.param.name); });
// clang-format on

TEST(RunningApps, SortsByApplicationThenTitleWithoutCaseKeepingTheServersOrderForTies) {
    CaptureFakes fakes;
    fakes.addApp(1, "Notes", "org.notes");
    fakes.addApp(2, "Banana");
    fakes.addApp(3, "apple");
    fakes.windowList.setWindows(ValueArray{
        listed(10, 1, "Notes", "beta"), listed(11, 2, "Banana"), listed(12, 1, "Notes", "Alpha"),
        listed(13, 3, "apple", "x"), listed(14, 1, "Notes", "alpha")});
    auto targets = RunningApps::currentTargets(fakes.env());
    std::vector<std::uint32_t> ids;
    for (const auto& t : targets)
        ids.push_back(t.id);
    ASSERT_EQ(ids, (std::vector<std::uint32_t>{13, 11, 12, 14, 10}));
    EXPECT_EQ(targets[2].bundleId, "org.notes");
    EXPECT_EQ(targets[2].pid, 1);
    EXPECT_EQ(fakes.windowList.requests.back(), WindowListOption::excludeDesktopElements);
}

TEST(RunningApps, AnUnreadableListGivesNoTargets) {
    CaptureFakes fakes;
    fakes.addApp(1, "Notes");
    for (Value reply : {Value(), Value("list"), Value(ValueArray{listed(10, 1, "Notes"), 3})}) {
        fakes.windowList.setWindows(reply);
        EXPECT_TRUE(RunningApps::currentTargets(fakes.env()).empty());
    }
}

TEST(RunningApps, CaseInsensitiveOrderFoldsAccentedCapitals) {
    EXPECT_EQ(RunningApps::compareCaseInsensitive("apple", "Banana"), -1);
    EXPECT_EQ(RunningApps::compareCaseInsensitive("ÉCLAIR", "éclair"), 0);
    EXPECT_EQ(RunningApps::compareCaseInsensitive("ÞÀ", "þà"), 0);
    EXPECT_EQ(RunningApps::compareCaseInsensitive("ab", "a"), 1);
}

}  // namespace
}  // namespace zd::testing
