// Finding the resource bundle among the platform's candidate folders, and stopping the program
// at the first use when there is none.
#include "model/ResourceBundle.h"

#include <gtest/gtest.h>

#include "model/Preferences.h"
#include "support/TemporaryFolder.h"
#include "testing/InMemorySettingsStore.h"

namespace zd {
namespace {

using test::TemporaryFolder;

TEST(ResourceBundle, FirstCandidateHoldingTheBundleWins) {
    TemporaryFolder folder;
    folder.file("share/Zephyrdock_Zephyrdock.bundle/Light.jpg");
    folder.file("bin/Zephyrdock_Zephyrdock.bundle/Light.jpg");
    auto share = (folder.path() / "share").string();
    auto bin = (folder.path() / "bin").string();
    EXPECT_EQ(ResourceBundle::locate({share, bin}), share + "/Zephyrdock_Zephyrdock.bundle");
    EXPECT_EQ(ResourceBundle::locate({bin, share}), bin + "/Zephyrdock_Zephyrdock.bundle");
}

TEST(ResourceBundle, FoundBesideTheExecutableWhenThereIsNoResourceFolder) {
    TemporaryFolder folder;
    folder.file("bin/Zephyrdock_Zephyrdock.bundle/Dark.jpg");
    // A data folder that doesn't exist, one without the bundle, an absent one, then the
    // executable's own folder.
    folder.file("other/readme.txt");
    std::vector<std::string> candidates{(folder.path() / "share/zephyrdock").string(),
                                        (folder.path() / "other").string(), "",
                                        (folder.path() / "bin").string()};
    ResourceBundle bundle(candidates);
    EXPECT_EQ(bundle.path(), (folder.path() / "bin/Zephyrdock_Zephyrdock.bundle").string());
    EXPECT_EQ(bundle.url("Dark", "jpg"),
              (folder.path() / "bin/Zephyrdock_Zephyrdock.bundle/Dark.jpg").string());
    EXPECT_EQ(bundle.url("Light", "jpg"), std::nullopt);
}

TEST(ResourceBundle, AFileOfTheBundlesNameIsNoBundle) {
    TemporaryFolder folder;
    folder.file("Zephyrdock_Zephyrdock.bundle");
    EXPECT_EQ(ResourceBundle::locate({folder.path().string()}), std::nullopt);
}

TEST(ResourceBundleDeathTest, MissingBundleStopsTheProgramAtFirstUseOnly) {
    TemporaryFolder folder;
    ResourceBundle bundle({folder.path().string()});  // constructing it is harmless
    // Settings whose pictures all exist never ask for the bundle.
    auto light = folder.file("light.png");
    auto dark = folder.file("dark.png");
    InMemorySettingsStore store(
        std::map<std::string, Value>{{"lightBackgroundURL", light}, {"darkBackgroundURL", dark}});
    auto loaded = Preferences::load(store, bundle);
    EXPECT_EQ(loaded.lightBackground.url, light);
    EXPECT_EQ(loaded.darkBackground.url, dark);

    EXPECT_DEATH(bundle.path(), "unable to find bundle named Zephyrdock_Zephyrdock");
    InMemorySettingsStore empty;
    EXPECT_DEATH(Preferences::load(empty, bundle),
                 "unable to find bundle named Zephyrdock_Zephyrdock");
}

}  // namespace
}  // namespace zd
