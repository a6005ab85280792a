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
    std::string list = "[";
    for (const auto& element : *value.asArray())
        list += (list.size() > 1 ? "," : "") + text(element);
    return list + "]";
}

// Every write as "key=value", every removal as "-key".
class RecordingStore : public InMemorySettingsStore {
  public:
    void setObject(const Value& value, const std::string& key) override {
        writes.push_back(key + "=" + text(value));
        InMemorySettingsStore::setObject(value, key);
    }
    void removeObjectForKey(const std::string& key) override {
        writes.push_back("-" + key);
        InMemorySettingsStore::removeObjectForKey(key);
    }
    Strings writes;
};

class Actions : public ::testing::Test {
  protected:
    Actions() {
        env.clock = &clock;
        env.settings = &store;
        env.dialogs = &dialogs;
        view.languages = {de};
    }
    // Runs the action and what it posted; gives the writes and the notices it caused.
    void act(const std::function<void(ContentView&)>& action) {
        store.writes.clear();
        heard.clear();
        action(view);
        clock.runPosted();
    }

    EventLog log;
    ManualClock clock;
    RecordingStore store;
    FakeDialogBackend dialogs{log};
    FakeRunServices services{log};
    Environment env;
    ContentView view{env, services};
    std::vector<ViewChange> heard;
    Subscription listening = view.notices.subscribe([this](ViewChange c) { heard.push_back(c); });
};

struct WriteCase {
    const char* name;
    std::function<void(ContentView&)> action;
    Strings writes;
};

class ActionWrites : public Actions, public ::testing::WithParamInterface<WriteCase> {};

TEST_P(ActionWrites, WritesOnlyItsOwnKeysAndAnnouncesSettings) {
    act(GetParam().action);
    EXPECT_EQ(store.writes, GetParam().writes);
    EXPECT_EQ(heard, (std::vector<ViewChange>{ViewChange::settings}));
}

INSTANTIATE_TEST_SUITE_P(
    EveryControl, ActionWrites,
    ::testing::Values(
        WriteCase{"scope",
                  [](ContentView& v) { v.setCaptureScope(CaptureScope::allWindows); },
                  {"captureScope=all"}},
        WriteCase{"sizePreset",
                  [](ContentView& v) { v.setSizePreset(WindowSizePreset::full); },
                  {"windowSizePreset=full"}},
        WriteCase{"toggleOff",
                  [](ContentView& v) { v.toggleAppearance(light); },
                  {"captureLight=false", "captureDark=true"}},
        WriteCase{
            "addLanguage", [](ContentView& v) { v.addLanguage(fr); }, {"languageCodes=[de,fr]"}},
        WriteCase{"removeLast",
                  [](ContentView& v) { v.removeLanguage(de); },
                  {"languageCodes=[]"}},  // an empty list, not a removed key
        WriteCase{"canvas",
                  [](ContentView& v) { v.setOutputSize(OutputSize::custom); },
                  {"outputSize=Custom\u2026"}},
        WriteCase{"typingWidth", [](ContentView& v) { v.setCustomCanvasWidth(0); }, {}},
        WriteCase{"typingHeight", [](ContentView& v) { v.setCustomCanvasHeight(-5); }, {}},
        WriteCase{
            "shadow", [](ContentView& v) { v.setWindowShadow(false); }, {"windowShadow=false"}},
        WriteCase{"darkKind",
                  [](ContentView& v) { v.setBackgroundKind(dark, BackgroundKind::transparent); },
                  {"darkBackgroundKind=transparent"}},
        WriteCase{"lightPicture",
                  [](ContentView& v) { v.setBackgroundURL(light, "/p/a.png"); },
                  {"lightBackgroundURL=/p/a.png"}},
        WriteCase{"clearPicture",
                  [](ContentView& v) { v.setBackgroundURL(dark, std::nullopt); },
                  {"-darkBackgroundURL"}},
        WriteCase{"fillColor", [](ContentView& v) { v.setBackgroundFillColor(light, {}); }, {}},
        WriteCase{"countdown",
                  [](ContentView& v) { v.setCountdownSeconds(10); },
                  {"countdownSeconds=10"}},
        WriteCase{"repeat",
                  [](ContentView& v) { v.setCountdownAfterRelaunch(true); },
                  {"countdownAfterRelaunch=true"}},
        WriteCase{"menuBar", [](ContentView& v) { v.setMenuBar({}); }, {}},
        WriteCase{"variant", [](ContentView& v) { v.setVariantName("x"); }, {}}),
    [](const auto& param) { return std::string(param.param.name); });

TEST_F(Actions, LastAppearanceStaysOnButBothKeysAreWritten) {
    view.enabledAppearances = {dark};
    act([](ContentView& v) { v.toggleAppearance(dark); });
    EXPECT_EQ(view.enabledAppearances, (std::set<AppearanceMode>{dark}));
    EXPECT_EQ(store.writes, (Strings{"captureLight=false", "captureDark=true"}));
    act([](ContentView& v) { v.toggleAppearance(light); });
    EXPECT_EQ(view.enabledAppearances, (std::set<AppearanceMode>{light, dark}));
}

TEST_F(Actions, LanguagesChangeAfterTheEventWithoutDuplicatesAndAllOfACodeGoes) {
    view.addLanguage(fr);
    EXPECT_EQ(view.languages.size(), 1U);  // not yet: after the event that caused it
    clock.runPosted();
    act([](ContentView& v) { v.addLanguage({"fr", "Other label"}); });
    EXPECT_TRUE(store.writes.empty());
    EXPECT_TRUE(heard.empty());
    view.languages = {de, fr, de};  // a duplicate that came from the store
    act([](ContentView& v) { v.removeLanguage(de); });
    ASSERT_EQ(view.languages.size(), 1U);
    EXPECT_EQ(view.languages[0].code, "fr");
    EXPECT_EQ(store.writes, (Strings{"languageCodes=[fr]"}));
}

TEST_F(Actions, CustomSizeIsWrittenOnlyByTheCommitUnclamped) {
    act([](ContentView& v) {
        v.setCustomCanvasWidth(0);
        v.setCustomCanvasHeight(-3);
        v.commitCustomCanvasWidth();
        v.commitCustomCanvasHeight();
    });
    EXPECT_EQ(store.writes, (Strings{"customCanvasWidth=0", "customCanvasHeight=-3"}));
    EXPECT_TRUE(heard.size() == 2);  // the typing; a commit changes no state
}

TEST_F(Actions, ScopeSwitchKeepsSelectionAndPreset) {
    view.selectedTargetID = 7;
    view.sizePreset = WindowSizePreset::threeQ;
    act([](ContentView& v) {
        v.setCaptureScope(CaptureScope::allWindows);
        v.setCaptureScope(CaptureScope::singleWindow);
    });
    EXPECT_EQ(view.selectedTargetID, 7U);
    EXPECT_EQ(view.sizePreset, WindowSizePreset::threeQ);
}

TEST_F(Actions, PictureChooserAndDropSetThePictureAndLeaveTheKind) {
    view.darkBackground.kind = BackgroundKind::image;
    act([](ContentView& v) { v.chooseBackgroundImage(dark); });  // cancelled
    EXPECT_TRUE(store.writes.empty());
    EXPECT_EQ(log.entries().back(), "chooseImageFile png jpg jpeg tif tiff webp bmp gif heic");

    dialogs.chosenImage = "/pics/b.webp";
    act([](ContentView& v) { v.chooseBackgroundImage(dark); });
    EXPECT_EQ(view.darkBackground.url, "/pics/b.webp");
    EXPECT_EQ(view.darkBackground.kind, BackgroundKind::image);
    EXPECT_EQ(store.writes, (Strings{"darkBackgroundURL=/pics/b.webp"}));

    EXPECT_FALSE(view.handleDrop(light, {}));
    store.writes.clear();
    EXPECT_TRUE(view.handleDrop(light, {"https://example.com/a.png"}));  // no file: nothing
    EXPECT_TRUE(store.writes.empty());
    EXPECT_TRUE(view.handleDrop(light, {"file:///a/My%20Pic.png", "file:///b.png", "c"}));
    EXPECT_EQ(store.writes, (Strings{"lightBackgroundURL=/a/My Pic.png"}));
}

TEST_F(Actions, NoticesOfTheOtherControls) {
    view.compositeWindows = {{1, "A", "", true}, {2, "B", "", true}, {3, "C", "", false}};
    act([](ContentView& v) {
        v.setCompositeWindowEnabled(2, false);
        v.moveCompositeWindow(2, 0);
        v.moveCompositeWindow(0, 1);
        v.moveCompositeWindow(0, 3);  // out of range: nothing
        v.setDestinationMode(DestinationMode::newDestination);
        v.setShowingWindowsPopover(true);
    });
    EXPECT_EQ(heard,
              (std::vector<ViewChange>{ViewChange::lists, ViewChange::lists, ViewChange::lists,
                                       ViewChange::lastRun, ViewChange::settings}));
    std::vector<std::uint32_t> order;
    for (const auto& row : view.compositeWindows)
        order.push_back(row.id);
    EXPECT_EQ(order, (std::vector<std::uint32_t>{1, 3, 2}));
    EXPECT_FALSE(view.compositeWindows[2].enabled);
    EXPECT_TRUE(store.writes.empty());
}

}  // namespace
}  // namespace zd::testing
