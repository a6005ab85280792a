// The macOS backends where they meet the system's own types, run on a Mac only: property-list
// objects to and from Value, the settings in a defaults suite of their own, pixels through a
// CGImage, a tool run, a process's stamp and the system's symbols.

#import <Foundation/Foundation.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include <unistd.h>

#include "SystemSymbols.h"
#include "common/ProcessStamp.h"
#include "macos/CGImagePixels.h"
#include "macos/MacToolRunner.h"
#include "macos/ObjectValues.h"
#include "macos/UserDefaultsSettingsStore.h"

namespace zd::mac {
namespace {

TEST(ObjectValues, EveryStoredTypeComesBackAsItWent) {
    const Value values[] = {
        Value(true),
        Value(false),
        Value(std::int64_t{3}),
        Value(2.5),
        Value("2880 × 1800"),
        Value(ValueArray{Value("de"), Value("pt-BR")}),
        Value(ValueDictionary{{"X", Value(std::int64_t{10})}, {"Height", Value(24.5)}}),
    };
    for (const Value& value : values)
        EXPECT_EQ(valueOf(objectOf(value)), value);
}

TEST(ObjectValues, BooleansAndSmallIntegersStayApart) {
    // A boolean and the integer 1 are both NSNumbers; only the first is a boolean.
    EXPECT_EQ(valueOf(@YES), Value(true));
    EXPECT_EQ(valueOf(@1), Value(std::int64_t{1}));
    EXPECT_EQ(valueOf(@(static_cast<unsigned long long>(0x8000000000000005ull))),
              Value(std::uint64_t{0x8000000000000005ull}));
    EXPECT_TRUE(valueOf([NSDate date]).isNull());
}

TEST(UserDefaultsSettingsStore, WritesReadsListsAndRemovesKeys) {
    const std::string suite = "app.zephyrdock.tests." + std::to_string(getpid());
    {
        UserDefaultsSettingsStore store(suite);
        store.setObject(Value("all"), "captureScope");
        store.setBool(false, "captureDark");
        store.setInteger(5, "countdownSeconds");
        EXPECT_EQ(store.stringForKey("captureScope"), "all");
        EXPECT_EQ(store.objectForKey("captureDark"), Value(false));
        EXPECT_EQ(store.objectForKey("countdownSeconds"), Value(std::int64_t{5}));
        EXPECT_EQ(store.allKeys(),
                  (std::vector<std::string>{"captureDark", "captureScope", "countdownSeconds"}));
        store.removeObjectForKey("captureScope");
        EXPECT_FALSE(store.objectForKey("captureScope"));
    }
    [[NSUserDefaults standardUserDefaults] removePersistentDomainForName:stringOf(suite)];
}

TEST(CGImagePixels, PremultipliedPixelsSurviveACGImage) {
    Image image(2, 1);
    image.setPixel(0, 0, 0xff102030u);
    image.setPixel(1, 0, 0x80400000u);
    CGImageRef picture = createCGImage(image);
    ASSERT_NE(picture, nullptr);
    auto back = imageOf(picture);
    CGImageRelease(picture);
    ASSERT_TRUE(back);
    EXPECT_EQ(back->pixel(0, 0), 0xff102030u);
    EXPECT_EQ(back->pixel(1, 0), 0x80400000u);
}

TEST(MacToolRunner, GivesStatusAndOutputAndNothingForAMissingTool) {
    auto echoed = runTool("/bin/echo", {"-n", "dark"});
    ASSERT_TRUE(echoed);
    EXPECT_EQ(echoed->exitStatus, 0);
    EXPECT_EQ(echoed->standardOutput, "dark");
    EXPECT_EQ(runTool("/usr/bin/false", {})->exitStatus, 1);
    EXPECT_FALSE(runTool("/nonexistent/tool", {}));
}

TEST(DarwinProcessStamp, StaysForARunningProcessAndIsNoneForNoProcess) {
    const auto own = processStamp(getpid());
    ASSERT_TRUE(own);
    EXPECT_EQ(processStamp(getpid()), own);
    EXPECT_FALSE(processStamp(0));
    EXPECT_FALSE(processStamp(99999999));
}

TEST(SFSystemSymbols, EveryMenuBarSymbolIsTheSystemsOwnFromMacOS13) {
    for (const char* name : {"battery.0percent", "battery.50percent", "battery.100percent", "wifi",
                             "magnifyingglass", "switch.2"}) {
        const auto symbol = SystemSymbols::symbol(name, 28);
        ASSERT_TRUE(symbol) << name;
        EXPECT_GT(symbol->size.width, 0) << name;
        EXPECT_FALSE(symbol->picture.isNull()) << name;
    }
    EXPECT_FALSE(SystemSymbols::symbol("no.such.symbol", 28));
}

}  // namespace
}  // namespace zd::mac
