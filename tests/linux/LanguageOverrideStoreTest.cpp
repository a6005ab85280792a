#include "linux/LanguageOverrideStore.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "control/LanguageRelauncher.h"
#include "support/TemporaryFolder.h"

namespace zd::x11 {
namespace {

using Args = std::vector<std::string>;

TEST(LanguageOverrideStore, AnswersThePreferencesCommandsLikeTheTool) {
    zd::test::TemporaryFolder folder;
    LanguageOverrideStore store(folder.path() / "overrides");
    const std::string app = "org.gnome.gedit";

    const auto missing = store.runDefaults({"read", app, "AppleLanguages"});
    ASSERT_TRUE(missing);
    EXPECT_NE(missing->exitStatus, 0);
    EXPECT_EQ(LanguageRelauncher::currentLanguageCode(store, app),
              store.preferredLanguages().empty() ? "en" : store.preferredLanguages().front());

    EXPECT_EQ(store.runDefaults({"write", app, "AppleLanguages", "-array", "zh-Hans"})->exitStatus,
              0);
    EXPECT_EQ(store.runDefaults({"write", app, "AppleLocale", "-string", "zh-Hans"})->exitStatus,
              0);
    EXPECT_EQ(store.runDefaults({"read", app, "AppleLanguages"})->standardOutput,
              "(\n    \"zh-Hans\"\n)\n");
    EXPECT_EQ(store.runDefaults({"read", app, "AppleLocale"})->standardOutput, "zh-Hans\n");
    EXPECT_EQ(LanguageRelauncher::currentLanguageCode(store, app), "zh-Hans");

    // Overwritten, and kept across instances of the store.
    store.runDefaults({"write", app, "AppleLanguages", "-array", "de"});
    LanguageOverrideStore again(folder.path() / "overrides");
    EXPECT_EQ(again.runDefaults({"read", app, "AppleLanguages"})->standardOutput, "(\n    de\n)\n");

    LanguageRelauncher::clearOverride(again, app);
    EXPECT_NE(again.runDefaults({"read", app, "AppleLocale"})->exitStatus, 0);
    EXPECT_NE(again.runDefaults({"delete", app, "AppleLocale"})->exitStatus, 0);
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "overrides" / app));
}

TEST(LanguageOverrideStore, RefusesWhatCouldLeaveItsFolderOrBreakItsFile) {
    zd::test::TemporaryFolder folder;
    LanguageOverrideStore store(folder.path() / "overrides");
    for (const Args& bad : {Args{"write", "../escape", "AppleLocale", "-string", "de"},
                            Args{"write", ".hidden", "AppleLocale", "-string", "de"},
                            Args{"write", "a/b", "AppleLocale", "-string", "de"},
                            Args{"write", "app", "AppleLocale", "-string", "de\nAppleLanguages"},
                            Args{"write", "app", "AppleLocale", "-string"},
                            Args{"write", "app", "AppleLocale", "-bool", "yes"},
                            Args{"frobnicate", "app", "AppleLocale"}, Args{"read"}, Args{}}) {
        const auto result = store.runDefaults(bad);
        ASSERT_TRUE(result);
        EXPECT_NE(result->exitStatus, 0);
    }
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "escape"));
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "overrides" / "app"));
}

TEST(LanguageOverrideStore, PreferredLanguagesComeFromTheLocaleVariables) {
    zd::test::TemporaryFolder folder;
    LanguageOverrideStore store(folder.path());
    struct Saved {
        const char* name;
        std::optional<std::string> value;
    };
    std::vector<Saved> saved;
    for (const char* name : {"LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* v = std::getenv(name);
        saved.push_back({name, v ? std::optional<std::string>(v) : std::nullopt});
        unsetenv(name);
    }
    EXPECT_TRUE(store.preferredLanguages().empty());
    setenv("LANG", "pt_BR.UTF-8", 1);
    EXPECT_EQ(store.preferredLanguages(), Args{"pt-BR"});
    setenv("LANGUAGE", "fr_CA:fr:en", 1);
    EXPECT_EQ(store.preferredLanguages(), (Args{"fr-CA", "fr", "en"}));
    setenv("LC_ALL", "C", 1);
    EXPECT_TRUE(store.preferredLanguages().empty());
    for (const auto& s : saved) {
        if (s.value) {
            setenv(s.name, s.value->c_str(), 1);
        } else {
            unsetenv(s.name);
        }
    }
    EXPECT_EQ(store.launchSettings("de").environment.front(),
              (std::pair<std::string, std::string>{"LC_ALL", "de_DE.UTF-8"}));
}

}  // namespace
}  // namespace zd::x11
