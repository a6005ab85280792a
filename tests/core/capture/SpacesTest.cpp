#include "capture/Spaces.h"

#include <gtest/gtest.h>

#include "testing/FakeSpacesBackend.h"

namespace zd::testing {
namespace {

Value space(Value type, Value id) {
    ValueDictionary d;
    if (!type.isNull())
        d["type"] = type;
    if (!id.isNull())
        d["ManagedSpaceID"] = id;
    return d;
}

TEST(Spaces, OrdinalsRunWithoutGapsAcrossDisplaysAndSkipWhatIsntAnOrdinaryDesktop) {
    FakeSpacesBackend backend;
    backend.active = 9;
    backend.displays = ValueArray{
        ValueDictionary{
            {"Spaces",
             ValueArray{space(0, 5), space(4, 6) /* full-screen app */,
                        space(Value(), 7) /* no type: kept */, space(0, Value()) /* no id */,
                        space("0", 8) /* type of another kind: kept */, space(0, -3)}}},
        ValueDictionary{{"Other", 1}},
        ValueDictionary{{"Spaces", ValueArray{space(0, 9)}}},
    };
    EXPECT_EQ(
        Spaces::userSpaces(backend),
        (std::vector<Spaces::Info>{{5, 1, false}, {7, 2, false}, {8, 3, false}, {9, 4, true}}));
}

TEST(Spaces, AnUnreadableReplyGivesNoDesktops) {
    FakeSpacesBackend backend;
    for (Value reply : {Value(), Value(3), Value(ValueArray{Value(1)})}) {
        backend.displays = reply;
        EXPECT_TRUE(Spaces::userSpaces(backend).empty());
    }
}

TEST(Spaces, WindowDesktopsAreReadOnlyFromAnArrayOfIds) {
    FakeSpacesBackend backend;
    backend.placeWindow(1, {3, 4});
    backend.windowSpaces[2] = ValueArray{Value(3), Value("4")};
    EXPECT_EQ(Spaces::spaceIDs(backend, 1), (std::vector<std::uint64_t>{3, 4}));
    EXPECT_TRUE(Spaces::spaceIDs(backend, 2).empty());
    EXPECT_EQ(backend.masks, (std::vector<int>{7, 7}));
}

struct ReloadCase {
    const char* name;
    std::uint64_t selectedBefore;
    std::vector<std::uint64_t> spaces;
    std::uint64_t active;
    std::uint64_t selectedAfter;
};

class SpacesReload : public ::testing::TestWithParam<ReloadCase> {};

TEST_P(SpacesReload, KeepsOrFallsBack) {
    FakeSpacesBackend backend;
    backend.active = GetParam().active;
    backend.displays = ValueArray{FakeSpacesBackend::displayWith(GetParam().spaces)};
    std::vector<Spaces::Info> available;
    std::uint64_t selected = GetParam().selectedBefore;
    Spaces::reloadSpaces(&backend, available, selected);
    EXPECT_EQ(selected, GetParam().selectedAfter);
    EXPECT_EQ(available.size(), GetParam().spaces.size());
}

INSTANTIATE_TEST_SUITE_P(
    Spaces, SpacesReload,
    ::testing::Values(ReloadCase{"FirstReloadTakesTheActive", 0, {1, 2, 3}, 2, 2},
                      ReloadCase{"AnInactiveChoiceStands", 3, {1, 2, 3}, 2, 3},
                      ReloadCase{"AGoneChoiceFallsToTheActive", 7, {1, 2, 3}, 2, 2},
                      ReloadCase{"NoActiveTakesTheFirst", 7, {1, 2, 3}, 99, 1},
                      ReloadCase{"NoDesktopsTurnsTheFilterOff", 7, {}, 2, 0}),
    [](const auto& testCase) { return std::string(testCase.param.name); });

}  // namespace
}  // namespace zd::testing
