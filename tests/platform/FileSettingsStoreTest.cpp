// The settings file: what one store writes another reads, writes replace the file whole, and
// an unreadable file falls back and is kept.
#include "common/FileSettingsStore.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

#include "model/Preferences.h"
#include "support/TemporaryFolder.h"

namespace zd {
namespace {

namespace fs = std::filesystem;
using test::TemporaryFolder;

std::string contents(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

std::uint64_t inode(const fs::path& path) {
    struct stat info {};
    ::stat(path.c_str(), &info);
    return static_cast<std::uint64_t>(info.st_ino);
}

class FileSettingsStoreTest : public testing::Test {
  protected:
    TemporaryFolder folder;
    fs::path file = folder.path() / "config/zephyrdock/settings.json";
};

TEST_F(FileSettingsStoreTest, AnotherStoreReadsWhatTheOthersWroteWithItsTypes) {
    {
        FileSettingsStore writer(file.string());
        EXPECT_EQ(writer.objectForKey("captureScope"), std::nullopt);
        EXPECT_FALSE(fs::exists(file.parent_path())) << "reading a missing file creates nothing";
        writer.setObject("all", "captureScope");
        writer.setBool(false, "captureLight");
        writer.setInteger(-5, "countdownSeconds");
        writer.setObject(ValueArray{"en", "pt-BR"}, "languageCodes");
        writer.setObject(2.0, "someDouble");
        writer.setObject("2880 \u00d7 1800 (Mac App Store preferred)", "outputSize");
        EXPECT_EQ(writer.lastWriteError(), std::nullopt);
    }
    FileSettingsStore reader(file.string());
    EXPECT_EQ(reader.allKeys(),
              (std::vector<std::string>{"captureLight", "captureScope", "countdownSeconds",
                                        "languageCodes", "outputSize", "someDouble"}));
    EXPECT_EQ(reader.objectForKey("captureLight"), Value(false));
    EXPECT_EQ(reader.objectForKey("countdownSeconds"), Value(-5));
    EXPECT_EQ(reader.objectForKey("someDouble"), Value(2.0));
    EXPECT_EQ(Preferences::captureScope(reader), CaptureScope::allWindows);
    EXPECT_EQ(Preferences::outputSize(reader), OutputSize::mas2880);
    EXPECT_EQ(Preferences::languages(reader).size(), 2u);

    // Each store sees the other's later writes and keeps their keys.
    FileSettingsStore other(file.string());
    reader.setInteger(7, "countdownSeconds");
    EXPECT_EQ(other.objectForKey("countdownSeconds"), Value(7));
    reader.removeObjectForKey("captureLight");
    other.setObject(Value(), "someDouble");  // a null value removes the key
    EXPECT_EQ(reader.allKeys(), (std::vector<std::string>{"captureScope", "countdownSeconds",
                                                          "languageCodes", "outputSize"}));
}

TEST_F(FileSettingsStoreTest, WriteReplacesTheFileWholeAndLeavesNoTemporaryFilesOrReadsThem) {
    FileSettingsStore store(file.string());
    store.setBool(true, "windowShadow");
    auto before = inode(file);
    store.setBool(false, "windowShadow");
    EXPECT_NE(inode(file), before) << "the file was rewritten in place";
    for (const auto& entry : fs::directory_iterator(file.parent_path())) {
        auto name = entry.path().filename().string();
        EXPECT_TRUE(name == "settings.json" || name == "settings.json.lock") << name;
    }
    EXPECT_EQ((fs::status(file).permissions() & fs::perms::others_read), fs::perms::none);
    // A crashed write's temporary file is no settings file.
    std::ofstream(file.string() + ".tmp-Ab12Cd") << "{\"windowShadow\": tr";
    FileSettingsStore restarted(file.string());
    EXPECT_EQ(restarted.objectForKey("windowShadow"), Value(false));
    EXPECT_FALSE(restarted.fileIsUnreadable());
}

TEST_F(FileSettingsStoreTest, TwoProcessesWritingAtOnceKeepEachOthersKeys) {
    constexpr int keysEach = 40;
    pid_t child = ::fork();
    ASSERT_GE(child, 0);
    const char* prefix = child == 0 ? "child" : "parent";
    FileSettingsStore store(file.string());
    for (int i = 0; i < keysEach; ++i)
        store.setInteger(i, prefix + std::to_string(i));
    if (child == 0)
        ::_exit(store.lastWriteError() ? 1 : 0);
    int status = 0;
    ::waitpid(child, &status, 0);
    ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    EXPECT_EQ(FileSettingsStore(file.string()).allKeys().size(), 2u * keysEach);
}

class UnreadableSettingsFile : public FileSettingsStoreTest,
                               public testing::WithParamInterface<std::string> {};

TEST_P(UnreadableSettingsFile, FallsBackIsKeptAndMovedAsideOnTheNextWrite) {
    const std::string& original = GetParam();
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << original;

    FileSettingsStore store(file.string());
    EXPECT_TRUE(store.fileIsUnreadable());
    EXPECT_TRUE(store.allKeys().empty()) << "every setting falls back";
    EXPECT_EQ(contents(file), original) << "reading must not touch the file";

    store.setInteger(5, "countdownSeconds");
    EXPECT_EQ(store.lastWriteError(), std::nullopt);
    EXPECT_EQ(contents(file.string() + ".corrupt"), original);
    FileSettingsStore restarted(file.string());
    EXPECT_FALSE(restarted.fileIsUnreadable());
    EXPECT_EQ(restarted.allKeys(), std::vector<std::string>{"countdownSeconds"});
    EXPECT_EQ(Preferences::countdownSeconds(restarted), 5);
}

INSTANTIATE_TEST_SUITE_P(FileSettingsStore, UnreadableSettingsFile,
                         testing::Values("{\"captureScope\": \"all\", \"countdownSec",  // torn
                                         "[\"captureScope\", \"all\"]",  // foreign: no object
                                         "captureScope=all\n",           // foreign: no JSON
                                         std::string("{\"a\":\0\"b\"}", 10), ""));

TEST_F(FileSettingsStoreTest, AnythingButARegularFileIsRefusedWithItsPathAndLeftAlone) {
    const fs::path fifo = folder.path() / "fifo";
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    fs::create_directories(folder.path() / "folder/inside");
    for (const auto& [path, kind] :
         {std::pair{folder.path() / "folder", "is a folder"}, std::pair{fifo, "is a FIFO"}}) {
        FileSettingsStore store(path.string());
        EXPECT_EQ(store.unusablePath(), kind);
        EXPECT_TRUE(store.allKeys().empty());
        store.setBool(true, "windowShadow");
        ASSERT_TRUE(store.lastWriteError().has_value()) << kind;
        EXPECT_NE(store.lastWriteError()->find(path.string() + " " + kind), std::string::npos)
            << *store.lastWriteError();
        EXPECT_FALSE(fs::exists(path.string() + ".corrupt")) << kind;
    }
    EXPECT_TRUE(fs::is_directory(folder.path() / "folder/inside"));
    EXPECT_TRUE(fs::is_fifo(fifo));
}

TEST_F(FileSettingsStoreTest, ALinkedFileIsWrittenThroughAndEachUnreadableOneIsKept) {
    const fs::path target = folder.path() / "dotfiles/zephyrdock.json";
    fs::create_directories(target.parent_path());
    fs::create_directories(file.parent_path());
    fs::create_symlink("../../dotfiles/zephyrdock.json", file);
    FileSettingsStore store(file.string());
    for (const std::string garbage : {"first{", "second{"}) {
        std::ofstream(target, std::ios::trunc) << garbage;
        store.setObject("all", "captureScope");
        EXPECT_EQ(store.lastWriteError(), std::nullopt);
        ASSERT_TRUE(store.setAside().has_value());
        EXPECT_EQ(contents(*store.setAside()), garbage);
    }
    EXPECT_TRUE(fs::is_symlink(file));
    EXPECT_EQ(contents(target.string() + ".corrupt"), "first{");
    EXPECT_EQ(contents(target.string() + ".corrupt-2"), "second{");
    store.setBool(false, "windowShadow");
    EXPECT_FALSE(store.setAside().has_value()) << "a readable file is not set aside";
    EXPECT_EQ(FileSettingsStore(target.string()).allKeys().size(), 2u);
}

TEST_F(FileSettingsStoreTest, AFailedWriteIsReportedAndChangesNothing) {
    folder.file("blocker", "not a folder");
    FileSettingsStore store((folder.path() / "blocker/settings.json").string());
    store.setBool(true, "windowShadow");
    EXPECT_TRUE(store.lastWriteError().has_value());
    EXPECT_EQ(store.objectForKey("windowShadow"), std::nullopt);
}

TEST(FileSettingsStorePath, FollowsTheConfigFolderOfTheEnvironment) {
    std::string savedConfig = std::getenv("XDG_CONFIG_HOME") ? std::getenv("XDG_CONFIG_HOME") : "";
    std::string savedHome = std::getenv("HOME") ? std::getenv("HOME") : "";
    ::setenv("XDG_CONFIG_HOME", "/cfg", 1);
    ::setenv("HOME", "/home/someone", 1);
    EXPECT_EQ(FileSettingsStore::defaultPath(), "/cfg/zephyrdock/settings.json");
    ::setenv("XDG_CONFIG_HOME", "relative", 1);
    EXPECT_EQ(FileSettingsStore::defaultPath(), "/home/someone/.config/zephyrdock/settings.json");
    ::unsetenv("XDG_CONFIG_HOME");
    EXPECT_EQ(FileSettingsStore::defaultPath(), "/home/someone/.config/zephyrdock/settings.json");
    ::unsetenv("HOME");
    EXPECT_EQ(FileSettingsStore::defaultPath(), std::nullopt);
    if (!savedConfig.empty())
        ::setenv("XDG_CONFIG_HOME", savedConfig.c_str(), 1);
    if (!savedHome.empty())
        ::setenv("HOME", savedHome.c_str(), 1);
}

}  // namespace
}  // namespace zd
