// `zephyrdock settings` end to end: what one process stores the next one reads, bad arguments
// are usage errors that change nothing, and an unreadable file is reported and kept.
#include <gtest/gtest.h>

#include "CliRunner.h"
#include "common/FileSettingsStore.h"
#include "common/JsonValueCodec.h"

namespace zd {
namespace {

struct SettingsCommand : testing::Test {
    test::CliRunner cli;
};

TEST_F(SettingsCommand, StoresTypedValuesThatTheNextProcessShows) {
    EXPECT_EQ(cli.run({"settings", "set", "captureScope", "all"}).exitCode, 0);
    EXPECT_EQ(cli.run({"settings", "set", "outputSize", "mas1440"}).exitCode, 0);
    EXPECT_EQ(cli.run({"settings", "set", "languageCodes", "de", "xx"}).exitCode, 0);
    EXPECT_EQ(cli.run({"settings", "set", "captureLight", "off"}).exitCode, 0);
    EXPECT_EQ(cli.run({"settings", "set", "countdownSeconds", "3600"}).exitCode, 0);
    auto folder = cli.home.path().string();
    EXPECT_EQ(cli.run({"settings", "set", "saveFolderURL", folder}).exitCode, 0);

    FileSettingsStore store(cli.settingsPath());
    EXPECT_EQ(store.objectForKey("captureScope"), Value("all"));
    EXPECT_EQ(store.objectForKey("outputSize"), Value("1440 \u00d7 900"));
    EXPECT_EQ(store.objectForKey("languageCodes"), Value(ValueArray{"de", "xx"}));
    EXPECT_EQ(store.objectForKey("captureLight"), Value(false));
    EXPECT_EQ(store.objectForKey("countdownSeconds"), Value(3600));
    EXPECT_EQ(store.objectForKey("saveFolderURL"), Value(folder));

    auto shown = cli.run({"settings", "show", "--json"});
    ASSERT_EQ(shown.exitCode, 0) << shown.err;
    auto document = JsonValueCodec::decode(shown.out);
    ASSERT_TRUE(document.has_value()) << shown.out;
    const auto* keys = document->find("keys");
    ASSERT_NE(keys, nullptr);
    EXPECT_EQ(*keys->find("captureScope")->find("stored"), Value("all"));
    EXPECT_EQ(*keys->find("captureLight")->find("inEffect"), Value(false));
    EXPECT_EQ(*keys->find("captureDark")->find("inEffect"), Value(true));
    EXPECT_TRUE(keys->find("windowShadow")->find("stored")->isNull());
    EXPECT_EQ(*keys->find("lightBackgroundKind")->find("inEffect"), Value("image"));
    // A first start shows the bundle's picture.
    const auto* picture = keys->find("darkBackgroundURL")->find("inEffect")->asString();
    EXPECT_TRUE(picture && picture->ends_with("/Dark.jpg")) << shown.out;
    EXPECT_EQ(keys->asDictionary()->size(), 17u);

    // A settings file named relative to the working folder.
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(cli.home.path());
    const auto relative =
        cli.run({"--settings-file", "own.json", "settings", "set", "countdownSeconds", "4"});
    std::filesystem::current_path(before);
    EXPECT_EQ(relative.exitCode, 0) << relative.err;
    EXPECT_TRUE(std::filesystem::exists(cli.home.path() / "own.json"));
}

TEST_F(SettingsCommand, ResetRemovesKeysSoTheyFallBack) {
    cli.run({"settings", "set", "windowShadow", "false"});
    cli.run({"settings", "set", "countdownSeconds", "9"});
    EXPECT_EQ(cli.run({"settings", "reset", "windowShadow"}).exitCode, 0);
    FileSettingsStore store(cli.settingsPath());
    EXPECT_EQ(store.allKeys(), std::vector<std::string>{"countdownSeconds"});
    EXPECT_EQ(cli.run({"settings", "set", "languageCodes", "none"}).exitCode, 0);
    EXPECT_EQ(store.objectForKey("languageCodes"), Value(ValueArray{}));
    EXPECT_EQ(cli.run({"settings", "reset", "--all"}).exitCode, 0);
    EXPECT_TRUE(store.allKeys().empty());
}

TEST_F(SettingsCommand, BadArgumentsAreUsageErrorsThatStoreNothing) {
    const std::string picture = cli.home.file("some-picture.jpg");
    const std::vector<std::pair<std::vector<std::string>, std::string>> cases{
        {{"set", "captureMode", "all"}, "unknown key \"captureMode\""},
        {{"set", "captureScope", "All"}, "expected one of \"single\""},
        {{"set", "outputSize", "Custom"}, "is no value for outputSize"},
        {{"set", "countdownSeconds", "ten"}, "expected a whole number"},
        {{"set", "customCanvasWidth", "99999999999"}, "a whole number"},
        {{"set", "countdownSeconds", "1000000000"}, "from 0 to 3600 seconds"},
        {{"set", "windowShadow", "maybe"}, "true or false"},
        {{"set", "captureScope", "all", "single"}, "takes one value"},
        {{"set", "captureScope"}, "takes one value"},
        {{"set", "saveFolderURL", "/no/such/folder"}, "no such folder"},
        {{"set", "saveFolderURL", picture}, "is no folder"},
        {{"set", "lightBackgroundURL", "/tmp"}, "not a picture file"},
        {{"reset"}, "name the keys to reset"},
        {{"reset", "colour"}, "unknown key \"colour\""},
        {{"erase"}, "erase"},
    };
    for (auto [arguments, message] : cases) {
        arguments.insert(arguments.begin(), "settings");
        const auto result = cli.run(arguments);
        EXPECT_EQ(result.exitCode, 2) << message;
        EXPECT_EQ(result.out, "");
        EXPECT_NE(result.err.find(message), std::string::npos) << result.err;
        EXPECT_FALSE(std::filesystem::exists(cli.settingsPath())) << message;
    }
}

TEST_F(SettingsCommand, UnreadableFileIsReportedFallsBackAndIsKeptOnTheNextWrite) {
    cli.home.file("config/zephyrdock/settings.json", "{\"captureScope\": \"all\", \"coun");
    auto shown = cli.run({"settings", "show"});
    EXPECT_EQ(shown.exitCode, 0);
    EXPECT_NE(shown.err.find("can't be read as settings"), std::string::npos) << shown.err;
    EXPECT_NE(shown.out.find("captureScope            -"), std::string::npos) << shown.out;

    auto set = cli.run({"settings", "set", "countdownSeconds", "4"});
    EXPECT_EQ(set.exitCode, 0);
    // What is kept, and how, is the file store's (FileSettingsStoreTest); here, what is said.
    EXPECT_NE(set.err.find("kept as " + cli.settingsPath() + ".corrupt\n"), std::string::npos)
        << set.err;
}

TEST_F(SettingsCommand, WithoutAHomeFolderItFailsWithAMessage) {
    auto result = cli.run({"settings", "show"}, std::vector<std::string>{"PATH=/usr/bin:/bin"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_NE(result.err.find("--settings-file"), std::string::npos) << result.err;
    auto explicitFile = cli.home.path() / "elsewhere.json";
    EXPECT_EQ(
        cli.run({"--settings-file", explicitFile.string(), "settings", "set", "windowShadow", "no"},
                std::vector<std::string>{"PATH=/usr/bin:/bin"})
            .exitCode,
        0);
    EXPECT_EQ(FileSettingsStore(explicitFile.string()).objectForKey("windowShadow"), Value(false));
}

}  // namespace
}  // namespace zd
