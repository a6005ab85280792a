// What the window's controls do: each action's state change, the keys it writes (and the ones
// it must not), and the notices it raises.

#include <gtest/gtest.h>

#include <functional>

#include "testing/EventLog.h"
#include "testing/FakeDialogBackend.h"
#include "testing/FakeRunServices.h"
#include "testing/InMemorySettingsStore.h"
#include "testing/ManualClock.h"
#include "ui/ContentView.h"

namespace zd::testing {
namespace {

using Strings = std::vector<std::string>;
constexpr auto light = AppearanceMode::light;
constexpr auto dark = AppearanceMode::dark;
const LanguageSelection de{"de", "German"};
const LanguageSelection fr{"fr", "French"};

std::string text(const Value& value) {
    if (auto flag = value.asBool())
        return *flag ? "true" : "false";
    if (auto number = value.asInteger())
        return std::to_string(*number);
    if (const auto* string = value.asString())
        return *string;
    std::string list;
    for (const auto& element : *value.asArray())
        list += (list.empty() ? "" : ",") + text(element);
    return "[" + list + "]";
}

// Every write as "key=value", every removal as "-key".
class RecordingStore : public InMemorySettingsStore {
  public:
    void setObject(const Value& value, const std::string& key) override {
        writes.push_back(key + "=" + text(value));
    }
    void removeObjectForKey(const std::string& key) override { writes.push_back("-" + key); }
    Strings writes;
};

struct ActionCase {
    const char* name;
    std::function<void(ContentView&)> action;
    Strings writes;
    std::vector<ViewChange> notices{ViewChange::settings};
};

class Actions : public ::testing::TestWithParam<ActionCase> {
  protected:
    Actions() {
        view.languages = {de, fr, de};  // a duplicate, as a store may hold one
        view.enabledAppearances = {dark};
    }
    EventLog log;
    ManualClock clock;
    RecordingStore store;
    FakeDialogBackend dialogs{log};
    FakeRunServices services{log};
    Environment env{.clock = &clock, .settings = &store, .dialogs = &dialogs};
    ContentView view{env, services};
    std::vector<ViewChange> heard;
    Subscription listening = view.notices.subscribe([this](ViewChange c) { heard.push_back(c); });
};

TEST_P(Actions, WriteOnlyTheirOwnKeysAndAnnounce) {
    GetParam().action(view);
    clock.runPosted();  // the language actions run after the event
    EXPECT_EQ(store.writes, GetParam().writes);
    EXPECT_EQ(heard, GetParam().notices);
}

using V = ContentView&;
constexpr auto settings = ViewChange::settings;

// clang-format off
INSTANTIATE_TEST_SUITE_P(EveryControl, Actions, ::testing::Values(
    ActionCase{"scope", [](V v) { v.setCaptureScope(CaptureScope::allWindows); },
               {"captureScope=all"}},
    ActionCase{"sizePreset", [](V v) { v.setSizePreset(WindowSizePreset::full); },
               {"windowSizePreset=full"}},
    ActionCase{"lastAppearanceStays", [](V v) { v.toggleAppearance(dark); },
               {"captureLight=false", "captureDark=true"}},
    ActionCase{"appearanceOnAndOff",
               [](V v) { v.toggleAppearance(light); v.toggleAppearance(dark); },
               {"captureLight=true", "captureDark=true", "captureLight=true", "captureDark=false"},
               {settings, settings}},
    ActionCase{"addLanguage", [](V v) { v.addLanguage({"ja", "Japanese"}); },
               {"languageCodes=[de,fr,de,ja]"}},
    ActionCase{"addListedCode", [](V v) { v.addLanguage({"fr", "Other"}); }, {}, {}},
    ActionCase{"removeEveryEntryOfACode", [](V v) { v.removeLanguage(de); },
               {"languageCodes=[fr]"}},
    // An empty list, not a removed key.
    ActionCase{"removeAll", [](V v) { v.languages = {de}; v.removeLanguage(de); },
               {"languageCodes=[]"}},
    ActionCase{"canvas", [](V v) { v.setOutputSize(OutputSize::mas1440); },
               {"outputSize=1440 \u00d7 900"}},
    ActionCase{"typingOnly", [](V v) { v.setCustomCanvasWidth(0); v.setCustomCanvasHeight(-3); },
               {},
               {settings, settings}},
    ActionCase{"commitsUnclamped",
               [](V v) {
                   v.customCanvasWidth = 0;
                   v.customCanvasHeight = -3;
                   v.commitCustomCanvasWidth();
                   v.commitCustomCanvasHeight();
               },
               {"customCanvasWidth=0", "customCanvasHeight=-3"}, {}},
    ActionCase{"shadow", [](V v) { v.setWindowShadow(false); }, {"windowShadow=false"}},
    ActionCase{"kind", [](V v) { v.setBackgroundKind(dark, BackgroundKind::transparent); },
               {"darkBackgroundKind=transparent"}},
    ActionCase{"picture", [](V v) { v.setBackgroundURL(light, "/p/a.png"); },
               {"lightBackgroundURL=/p/a.png"}},
    ActionCase{"clearPicture", [](V v) { v.setBackgroundURL(dark, std::nullopt); },
               {"-darkBackgroundURL"}},
    ActionCase{"chooserCancelled", [](V v) { v.chooseBackgroundImage(dark); }, {}, {}},
    ActionCase{"dropOfNoFile", [](V v) { EXPECT_TRUE(v.handleDrop(dark, {"https://h/a.png"})); },
               {}, {}},
    ActionCase{"dropUsesTheFirst",
               [](V v) {
                   EXPECT_FALSE(v.handleDrop(light, {}));
                   EXPECT_TRUE(v.handleDrop(light, {"file:///a/b%20c.png", "file:///d"}));
               },
               {"lightBackgroundURL=/a/b c.png"}},
    ActionCase{"countdown", [](V v) { v.setCountdownSeconds(10); }, {"countdownSeconds=10"}},
    ActionCase{"repeat", [](V v) { v.setCountdownAfterRelaunch(true); },
               {"countdownAfterRelaunch=true"}},
    ActionCase{"unstored",
               [](V v) {
                   v.setBackgroundFillColor(light, {});
                   v.setMenuBar({});
                   v.setVariantName("x");
                   v.setShowingWindowsPopover(true);
                   v.setDestinationMode(DestinationMode::group);
               },
               {}, {settings, settings, settings, settings, ViewChange::lastRun}}),
    [](const auto& param) { return std::string(param.param.name); });
// clang-format on

TEST_F(Actions, ChosenPictureKeepsTheKindAndRowsReorder) {
    view.darkBackground.kind = BackgroundKind::image;
    dialogs.chosenImage = "/pics/b.webp";
    view.chooseBackgroundImage(dark);
    EXPECT_EQ(log.entries().back(), "chooseImageFile png jpg jpeg tif tiff webp bmp gif heic");
    EXPECT_EQ(view.darkBackground.url, "/pics/b.webp");
    EXPECT_EQ(view.darkBackground.kind, BackgroundKind::image);
    EXPECT_EQ(store.writes, (Strings{"darkBackgroundURL=/pics/b.webp"}));

    view.compositeWindows = {{1, "A", "", true}, {2, "B", "", true}, {3, "C", "", false}};
    heard.clear();
    view.setCompositeWindowEnabled(2, false);
    view.moveCompositeWindow(2, 0);
    view.moveCompositeWindow(0, 1);
    view.moveCompositeWindow(0, 3);  // out of range: nothing
    std::vector<std::uint32_t> order;
    for (const auto& row : view.compositeWindows)
        order.push_back(row.id);
    EXPECT_EQ(order, (std::vector<std::uint32_t>{1, 3, 2}));
    EXPECT_FALSE(view.compositeWindows[2].enabled);
    EXPECT_EQ(heard, std::vector<ViewChange>(3, ViewChange::lists));
}

}  // namespace
}  // namespace zd::testing
