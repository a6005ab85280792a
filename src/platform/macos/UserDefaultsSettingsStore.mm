#include "macos/UserDefaultsSettingsStore.h"

#import <Foundation/Foundation.h>

#include <algorithm>

#include "macos/ObjectValues.h"

namespace zd::mac {

namespace {

NSUserDefaults* defaultsOf(const std::string& suiteName) {
    if (suiteName.empty())
        return [NSUserDefaults standardUserDefaults];
    return [[NSUserDefaults alloc] initWithSuiteName:stringOf(suiteName)];
}

// The domain this program writes to: the suite, the application's bundle identifier, or for
// a program outside a bundle (the command line) its process name.
NSString* domainOf(const std::string& suiteName) {
    if (!suiteName.empty())
        return stringOf(suiteName);
    NSString* identifier = [NSBundle mainBundle].bundleIdentifier;
    return identifier != nil ? identifier : [NSProcessInfo processInfo].processName;
}

}  // namespace

UserDefaultsSettingsStore::UserDefaultsSettingsStore(std::string suiteName)
    : suiteName_(std::move(suiteName)) {}

std::optional<Value> UserDefaultsSettingsStore::objectForKey(const std::string& key) const {
    @autoreleasepool {
        id object = [defaultsOf(suiteName_) objectForKey:stringOf(key)];
        if (object == nil)
            return std::nullopt;
        return valueOf(object);
    }
}

void UserDefaultsSettingsStore::setObject(const Value& value, const std::string& key) {
    @autoreleasepool {
        id object = objectOf(value);
        if (object == nil)
            [defaultsOf(suiteName_) removeObjectForKey:stringOf(key)];
        else
            [defaultsOf(suiteName_) setObject:object forKey:stringOf(key)];
    }
}

void UserDefaultsSettingsStore::removeObjectForKey(const std::string& key) {
    @autoreleasepool {
        [defaultsOf(suiteName_) removeObjectForKey:stringOf(key)];
    }
}

std::vector<std::string> UserDefaultsSettingsStore::allKeys() const {
    @autoreleasepool {
        std::vector<std::string> keys;
        NSString* domain = domainOf(suiteName_);
        // Only this domain's own keys, not the global domain's that reads also see.
        NSDictionary* stored = [defaultsOf(suiteName_) persistentDomainForName:domain];
        for (id key in stored) {
            if ([key isKindOfClass:[NSString class]])
                keys.push_back(textOf(static_cast<NSString*>(key)));
        }
        std::sort(keys.begin(), keys.end());
        return keys;
    }
}

}  // namespace zd::mac
