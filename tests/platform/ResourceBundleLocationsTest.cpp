// The Linux edition finds its bundle installed under share/ or beside the executable.
#include "linux/ResourceBundleLocations.h"

#include <gtest/gtest.h>

#include "model/ResourceBundle.h"
#include "support/TemporaryFolder.h"

namespace zd {
namespace {

TEST(ResourceBundleLocations, FindsTheBundleOfABuildTreeAndOfAnInstallInThatOrder) {
    EXPECT_EQ(resourceBundleCandidates("/usr/bin/zephyrdock"),
              (std::vector<std::string>{"/usr/share/zephyrdock", "/usr/bin"}));
    test::TemporaryFolder folder;
    folder.file("build/bin/Zephyrdock_Zephyrdock.bundle/Light.jpg");
    folder.file("prefix/share/zephyrdock/Zephyrdock_Zephyrdock.bundle/Light.jpg");
    ResourceBundle build(
        resourceBundleCandidates((folder.path() / "build/bin/zephyrdock").string()));
    EXPECT_EQ(build.path(), (folder.path() / "build/bin/Zephyrdock_Zephyrdock.bundle").string());
    ResourceBundle installed(
        resourceBundleCandidates((folder.path() / "prefix/bin/zephyrdock").string()));
    EXPECT_EQ(installed.path(),
              (folder.path() / "prefix/share/zephyrdock/Zephyrdock_Zephyrdock.bundle").string());
}

TEST(ResourceBundleLocations, ThisProcessNamesItsOwnFolder) {
    auto candidates = resourceBundleCandidates();
    ASSERT_EQ(candidates.size(), 2u);
    EXPECT_TRUE(std::filesystem::is_directory(candidates[1]));
}

}  // namespace
}  // namespace zd
