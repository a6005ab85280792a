// The stored settings: each key's own fallback, the languages, the canvas, the appearances and
// the first-run backgrounds, over an in-memory store.
#include "model/Preferences.h"

#include <gtest/gtest.h>

#include <climits>
#include <functional>

#include "model/ResourceBundle.h"
#include "support/TemporaryFolder.h"
#include "testing/InMemorySettingsStore.h"

namespace zd {
namespace {

using test::TemporaryFolder;

// A bundle with both first-run pictures, in a folder of its own.
struct BundleFixture {
    TemporaryFolder folder;
    std::string light = folder.file("share/Zephyrdock_Zephyrdock.bundle/Light.jpg");
    std::string dark = folder.file("share/Zephyrdock_Zephyrdock.bundle/Dark.jpg");
    ResourceBundle bundle{{(folder.path() / "share").string()}};
};

std::string text(const std::vector<LanguageSelection>& languages) {
    std::string result;
    for (const auto& language : languages) {
        if (!result.empty())
            result += ",";
        result += language.code + ":" + language.label;
    }
    return result;
}

// One read of one key, rendered as text so that one table covers keys of every type.
using Read = std::function<std::string(const SettingsStore&)>;

struct FallbackCase {
    const char* name;
    std::string_view key;
    std::optional<Value> stored;
    Read read;
    std::string expected;
};

Read scope = [](const SettingsStore& s) { return rawString(Preferences::captureScope(s)); };
Read preset = [](const SettingsStore& s) { return rawString(Preferences::windowSizePreset(s)); };
Read canvas = [](const SettingsStore& s) { return rawString(Preferences::outputSize(s)); };
Read lightKind = [](const SettingsStore& s) {
    return rawString(Preferences::lightBackgroundKind(s));
};
Read darkKind = [](const SettingsStore& s) {
    return rawString(Preferences::darkBackgroundKind(s));
};
Read languages = [](const SettingsStore& s) { return text(Preferences::languages(s)); };
Read flag(bool (*read)(const SettingsStore&)) {
    return [read](const SettingsStore& s) { return std::string(read(s) ? "true" : "false"); };
}
Read number(int (*read)(const SettingsStore&)) {
    return [read](const SettingsStore& s) { return std::to_string(read(s)); };
}

namespace K = Preferences::Keys;

Read countdown = number(Preferences::countdownSeconds);
Read width = number(Preferences::customCanvasWidth);
Read height = number(Preferences::customCanvasHeight);
Read lightOn = flag(Preferences::captureLight);
Read darkOn = flag(Preferences::captureDark);
Read repeat = flag(Preferences::countdownAfterRelaunch);
Read shadow = flag(Preferences::windowShadow);
Read barBackground = flag(Preferences::menuBarBackground);
const std::string mas2880 = "2880 \u00d7 1800 (Mac App Store preferred)";

// clang-format off
const FallbackCase fallbackCases[] = {
    {"ScopeAbsent", K::captureScope, std::nullopt, scope, "single"},
    {"ScopeAll", K::captureScope, "all", scope, "all"},
    {"ScopeCapitalised", K::captureScope, "All", scope, "single"},
    {"ScopeBoolean", K::captureScope, true, scope, "single"},
    {"PresetAbsent", K::windowSizePreset, std::nullopt, preset, "half"},
    {"PresetThreeQ", K::windowSizePreset, "threeQ", preset, "threeQ"},
    {"PresetCapitalised", K::windowSizePreset, "ThreeQ", preset, "half"},
    {"PresetList", K::windowSizePreset, ValueArray{"full"}, preset, "half"},
    {"CanvasAbsent", K::outputSize, std::nullopt, canvas, mas2880},
    {"CanvasCustom", K::outputSize, "Custom\u2026", canvas, "Custom\u2026"},
    {"CanvasCustomWithoutEllipsis", K::outputSize, "Custom", canvas, mas2880},
    {"CanvasWithLetterX", K::outputSize, "1440 x 900", canvas, mas2880},
    {"CanvasNumber", K::outputSize, 1440, canvas, mas2880},
    {"LightKindImage", K::lightBackgroundKind, "image", lightKind, "image"},
    {"LightKindCapitalised", K::lightBackgroundKind, "Image", lightKind, "color"},
    {"LightKindEmpty", K::lightBackgroundKind, "", lightKind, "color"},
    {"LightKindNumber", K::lightBackgroundKind, 2, lightKind, "color"},
    {"DarkKindTransparent", K::darkBackgroundKind, "transparent", darkKind, "transparent"},
    {"DarkKindUnknown", K::darkBackgroundKind, "gradient", darkKind, "color"},
    {"CountdownAbsent", K::countdownSeconds, std::nullopt, countdown, "3"},
    {"CountdownNegative", K::countdownSeconds, -2, countdown, "-2"},
    {"CountdownText", K::countdownSeconds, "5", countdown, "3"},
    {"CountdownBoolean", K::countdownSeconds, true, countdown, "3"},
    {"CountdownWholeDouble", K::countdownSeconds, 4.0, countdown, "4"},
    {"CountdownFraction", K::countdownSeconds, 4.5, countdown, "3"},
    {"CountdownMostNegative", K::countdownSeconds, -9.2e18, countdown, std::to_string(INT_MIN)},
    {"CountdownHuge", K::countdownSeconds, std::int64_t{1} << 40, countdown,
        std::to_string(INT_MAX)},
    {"WidthZero", K::customCanvasWidth, 0, width, "0"},
    {"WidthAbsent", K::customCanvasWidth, std::nullopt, width, "1920"},
    {"WidthText", K::customCanvasWidth, "100", width, "1920"},
    {"HeightAbsent", K::customCanvasHeight, std::nullopt, height, "1200"},
    {"HeightList", K::customCanvasHeight, ValueArray{}, height, "1200"},
    {"LightOff", K::captureLight, false, lightOn, "false"},
    {"LightText", K::captureLight, "false", lightOn, "true"},
    {"LightZero", K::captureLight, 0, lightOn, "false"},
    {"LightTwo", K::captureLight, 2, lightOn, "true"},
    {"DarkOff", K::captureDark, false, darkOn, "false"},
    {"DarkAbsent", K::captureDark, std::nullopt, darkOn, "true"},
    {"RepeatOn", K::countdownAfterRelaunch, true, repeat, "true"},
    {"RepeatText", K::countdownAfterRelaunch, "true", repeat, "false"},
    {"RepeatOne", K::countdownAfterRelaunch, 1.0, repeat, "true"},
    {"ShadowOff", K::windowShadow, false, shadow, "false"},
    {"ShadowText", K::windowShadow, "no", shadow, "true"},
    {"MenuBarBackgroundOff", K::menuBarBackground, false, barBackground, "false"},
    {"MenuBarBackgroundAbsent", K::menuBarBackground, std::nullopt, barBackground, "true"},
    {"LanguagesAbsent", K::languageCodes, std::nullopt, languages, ""},
    {"LanguagesKeepUnknownAndDuplicates", K::languageCodes, ValueArray{"en", "xx", "en"}, languages,
     "en:English,xx:xx,en:English"},
    {"LanguagesCatalogLabel", K::languageCodes, ValueArray{"pt-BR", "zh-Hant"}, languages,
     "pt-BR:Portuguese (Brazil),zh-Hant:Chinese (Traditional)"},
    {"LanguagesCaseSensitive", K::languageCodes, ValueArray{"EN"}, languages, "EN:EN"},
    {"LanguagesNumberSpoilsList", K::languageCodes, ValueArray{"en", 5, "fr"}, languages, ""},
    {"LanguagesSingleText", K::languageCodes, "en", languages, ""},
};
// clang-format on

class PreferencesFallback : public testing::TestWithParam<FallbackCase> {};

TEST_P(PreferencesFallback, ReadsStoredValueOrFallsBack) {
    const auto& c = GetParam();
    InMemorySettingsStore store;
    if (c.stored)
        store.setObject(*c.stored, std::string(c.key));
    EXPECT_EQ(c.read(store), c.expected);
}

INSTANTIATE_TEST_SUITE_P(EveryKey, PreferencesFallback, testing::ValuesIn(fallbackCases),
                         [](const auto& caseInfo) { return std::string(caseInfo.param.name); });

TEST(Preferences, EmptyStoreGivesTheDefaultsAndWritesNothing) {
    BundleFixture fixture;
    InMemorySettingsStore store;
    auto loaded = Preferences::load(store, fixture.bundle);

    EXPECT_EQ(loaded.captureScope, CaptureScope::singleWindow);
    EXPECT_EQ(loaded.sizePreset, WindowSizePreset::half);
    EXPECT_EQ(loaded.enabledAppearances,
              (std::set<AppearanceMode>{AppearanceMode::light, AppearanceMode::dark}));
    EXPECT_EQ(loaded.countdownSeconds, 3);
    EXPECT_FALSE(loaded.countdownAfterRelaunch);
    EXPECT_TRUE(loaded.languages.empty());
    EXPECT_EQ(loaded.outputSize, OutputSize::mas2880);
    EXPECT_EQ(loaded.customCanvasWidth, 1920);
    EXPECT_EQ(loaded.customCanvasHeight, 1200);
    EXPECT_TRUE(loaded.windowShadow);
    EXPECT_EQ(loaded.lightBackground,
              (BackgroundChoice{BackgroundKind::image, fixture.light, Color::white(0.95)}));
    EXPECT_EQ(loaded.darkBackground,
              (BackgroundChoice{BackgroundKind::image, fixture.dark, Color::white(0.06)}));
    EXPECT_TRUE(loaded.menuBarHasBackground);
    EXPECT_EQ(store.writeCount(), 0);
}

TEST(Preferences, StoredValuesLoadIntoTheStartingState) {
    BundleFixture fixture;
    InMemorySettingsStore store({{"captureScope", "all"},
                                 {"windowSizePreset", "full"},
                                 {"captureLight", false},
                                 {"countdownSeconds", 0},
                                 {"languageCodes", ValueArray{"de"}},
                                 {"outputSize", "1280 \u00d7 800"},
                                 {"menuBarBackground", false}});
    auto loaded = Preferences::load(store, fixture.bundle);
    EXPECT_EQ(loaded.captureScope, CaptureScope::allWindows);
    EXPECT_EQ(loaded.sizePreset, WindowSizePreset::full);
    EXPECT_EQ(loaded.enabledAppearances, std::set<AppearanceMode>{AppearanceMode::dark});
    EXPECT_EQ(loaded.countdownSeconds, 0);
    EXPECT_EQ(text(loaded.languages), "de:German");
    EXPECT_EQ(loaded.outputSize, OutputSize::mas1280);
    EXPECT_FALSE(loaded.menuBarHasBackground);
}

TEST(Preferences, BothAppearancesOffMeansBoth) {
    InMemorySettingsStore store({{"captureLight", false}, {"captureDark", false}});
    EXPECT_EQ(Preferences::enabledAppearances(store),
              (std::set<AppearanceMode>{AppearanceMode::light, AppearanceMode::dark}));
}

TEST(Preferences, UrlGivesOnlyExistingFilesAndLeavesStaleEntries) {
    TemporaryFolder folder;
    auto existing = folder.file("picture.png");
    InMemorySettingsStore store({{"saveFolderURL", folder.path().string()},
                                 {"lightBackgroundURL", existing},
                                 {"darkBackgroundURL", (folder.path() / "gone.png").string()}});
    EXPECT_EQ(Preferences::url(store, K::saveFolderURL), folder.path().string());
    EXPECT_EQ(Preferences::url(store, K::lightBackgroundURL), existing);
    EXPECT_EQ(Preferences::url(store, K::darkBackgroundURL), std::nullopt);
    EXPECT_TRUE(store.objectForKey("darkBackgroundURL").has_value());
    EXPECT_EQ(Preferences::url(store, "nothingStoredHere"), std::nullopt);
    // Empty or not text: nothing.
    store.setObject("", "saveFolderURL");
    store.setObject(ValueArray{"/"}, "lightBackgroundURL");
    EXPECT_EQ(Preferences::url(store, K::saveFolderURL), std::nullopt);
    EXPECT_EQ(Preferences::url(store, K::lightBackgroundURL), std::nullopt);
}

TEST(Preferences, WritersStoreRawValuesAndNoUrlRemovesTheKey) {
    InMemorySettingsStore store;
    Preferences::setWindowSizePreset(store, WindowSizePreset::threeQ);
    Preferences::setSaveFolderURL(store, "/shots");
    EXPECT_EQ(store.objectForKey("windowSizePreset"), Value("threeQ"));
    EXPECT_EQ(store.objectForKey("saveFolderURL"), Value("/shots"));
    Preferences::setURL(store, "/pics/a.png", K::lightBackgroundURL);
    EXPECT_EQ(store.objectForKey("lightBackgroundURL"), Value("/pics/a.png"));
    Preferences::setURL(store, std::nullopt, K::saveFolderURL);
    EXPECT_FALSE(store.objectForKey("saveFolderURL").has_value());
}

// The first-run background: which kind and which picture one appearance starts with.
struct FirstRunCase {
    const char* name;
    std::optional<Value> kind;
    enum class Picture { none, existing, deleted } picture;
    BackgroundKind expectedKind;
    bool expectBundlePicture;  // otherwise the stored picture
};

class FirstRunBackground : public testing::TestWithParam<FirstRunCase> {};

TEST_P(FirstRunBackground, ChoosesKindAndPicture) {
    const auto& c = GetParam();
    BundleFixture fixture;
    auto stored = fixture.folder.file("mine/desk.png");
    InMemorySettingsStore store;
    if (c.kind)
        store.setObject(*c.kind, "lightBackgroundKind");
    if (c.picture == FirstRunCase::Picture::existing) {
        store.setObject(stored, "lightBackgroundURL");
    } else if (c.picture == FirstRunCase::Picture::deleted) {
        store.setObject((fixture.folder.path() / "mine/deleted.png").string(),
                        "lightBackgroundURL");
    }
    auto choice = Preferences::background(store, AppearanceMode::light, fixture.bundle);
    EXPECT_EQ(choice.kind, c.expectedKind);
    EXPECT_EQ(choice.url, c.expectBundlePicture ? fixture.light : stored);
    EXPECT_EQ(choice.fillColor, Color::white(0.95));
}

using enum FirstRunCase::Picture;
using enum BackgroundKind;

// clang-format off
INSTANTIATE_TEST_SUITE_P(Preferences, FirstRunBackground, testing::Values(
    FirstRunCase{"NothingStoredIsFirstRun", std::nullopt, none, image, true},
    FirstRunCase{"DeletedPictureWithoutKindIsFirstRun", std::nullopt, deleted, image, true},
    FirstRunCase{"DeletedPictureKeepsImageKind", "image", deleted, image, true},
    FirstRunCase{"PictureWithoutKindIsColor", std::nullopt, existing, color, false},
    FirstRunCase{"CapitalisedKindIsColor", "Image", none, color, true},
    FirstRunCase{"KindOfAnyTypeEndsFirstRun", 1, none, color, true},
    FirstRunCase{"TransparentKeepsItsPicture", "transparent", existing, transparent, false}),
    [](const auto& caseInfo) { return std::string(caseInfo.param.name); });
// clang-format on

TEST(Preferences, DarkBackgroundReadsItsOwnKeys) {
    BundleFixture fixture;
    InMemorySettingsStore store(
        std::map<std::string, Value>{{"lightBackgroundKind", "transparent"}});
    auto dark = Preferences::background(store, AppearanceMode::dark, fixture.bundle);
    EXPECT_EQ(dark, (BackgroundChoice{BackgroundKind::image, fixture.dark, Color::white(0.06)}));
}

TEST(Preferences, BundleWithoutThePictureGivesNoUrl) {
    TemporaryFolder folder;
    folder.file("Zephyrdock_Zephyrdock.bundle/Light.jpg");
    ResourceBundle bundle{{folder.path().string()}};
    InMemorySettingsStore store;
    auto dark = Preferences::background(store, AppearanceMode::dark, bundle);
    EXPECT_EQ(dark.kind, BackgroundKind::image);
    EXPECT_EQ(dark.url, std::nullopt);
}

}  // namespace
}  // namespace zd
