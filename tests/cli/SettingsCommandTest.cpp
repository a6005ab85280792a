// `zephyrdock settings` end to end: what one process stores the next one reads, bad arguments
// are usage errors that change nothing, and an unreadable file is reported and kept.
#include <gtest/gtest.h>

#include "CliRunner.h"
#include "common/FileSettingsStore.h"
#include "common/JsonValueCodec.h"

namespace zd {
namespace {

using test::CliResult;

class SettingsCommand : public testing::Test {
  protected:
    test::CliRunner cli;

    void expectUsageError(const CliResult& result, const std::string& message) {
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_EQ(result.out, "");
        EXPECT_NE(result.err.find(message), std::string::npos) << result.err;
    }
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

struct BadArguments {
    const char* name;
    std::vector<std::string> arguments;
    std::string message;
};

// Test listings show the case's name, not its bytes.
void PrintTo(const BadArguments& bad, std::ostream* out) {
    *out << bad.name;
}

class SettingsUsage : public SettingsCommand, public testing::WithParamInterface<BadArguments> {};

TEST_P(SettingsUsage, IsAUsageErrorAndStoresNothing) {
    auto picture = cli.home.file("some-picture.jpg");
    auto arguments = GetParam().arguments;
    for (auto& word : arguments) {
        if (word == "{picture}")
            word = picture;
    }
    arguments.insert(arguments.begin(), "settings");
    expectUsageError(cli.run(arguments), GetParam().message);
    EXPECT_FALSE(std::filesystem::exists(cli.settingsPath()));
}

INSTANTIATE_TEST_SUITE_P(
    SettingsCommand, SettingsUsage,
    testing::Values(
        BadArguments{"UnknownKey", {"set", "captureMode", "all"}, "unknown key \"captureMode\""},
        BadArguments{
            "CapitalisedChoice", {"set", "captureScope", "All"}, "expected one of \"single\""},
        BadArguments{
            "CustomWithoutEllipsis", {"set", "outputSize", "Custom"}, "is no value for outputSize"},
        BadArguments{
            "TextForNumber", {"set", "countdownSeconds", "ten"}, "expected a whole number"},
        BadArguments{
            "NumberBeyondRange", {"set", "customCanvasWidth", "99999999999"}, "a whole number"},
        BadArguments{"CountdownBeyondItsFlag",
                     {"set", "countdownSeconds", "1000000000"},
                     "from 0 to 3600 seconds"},
        BadArguments{"WordForBoolean", {"set", "windowShadow", "maybe"}, "true or false"},
        BadArguments{"TwoValues", {"set", "captureScope", "all", "single"}, "takes one value"},
        BadArguments{"NoValue", {"set", "captureScope"}, "takes one value"},
        BadArguments{
            "MissingFolder", {"set", "saveFolderURL", "/no/such/folder"}, "no such folder"},
        BadArguments{"FileAsFolder", {"set", "saveFolderURL", "{picture}"}, "is no folder"},
        BadArguments{
            "FolderAsPicture", {"set", "lightBackgroundURL", "/tmp"}, "not a picture file"},
        BadArguments{"ResetNothing", {"reset"}, "name the keys to reset"},
        BadArguments{"ResetUnknown", {"reset", "colour"}, "unknown key \"colour\""},
        BadArguments{"UnknownSubcommand", {"erase"}, "erase"}),
    [](const auto& caseInfo) { return std::string(caseInfo.param.name); });

TEST_F(SettingsCommand, UnreadableFileIsReportedFallsBackAndIsKeptOnTheNextWrite) {
    cli.home.file("config/zephyrdock/settings.json", "{\"captureScope\": \"all\", \"coun");
    auto shown = cli.run({"settings", "show"});
    EXPECT_EQ(shown.exitCode, 0);
    EXPECT_NE(shown.err.find("can't be read as settings"), std::string::npos) << shown.err;
    EXPECT_NE(shown.out.find("captureScope            -"), std::string::npos) << shown.out;

    auto set = cli.run({"settings", "set", "countdownSeconds", "4"});
    EXPECT_EQ(set.exitCode, 0);
    EXPECT_NE(set.err.find("kept as " + cli.settingsPath() + ".corrupt\n"), std::string::npos)
        << set.err;
    EXPECT_EQ(test::CliRunner::read(cli.settingsPath() + ".corrupt"),
              "{\"captureScope\": \"all\", \"coun");
    EXPECT_EQ(FileSettingsStore(cli.settingsPath()).allKeys(),
              std::vector<std::string>{"countdownSeconds"});
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
