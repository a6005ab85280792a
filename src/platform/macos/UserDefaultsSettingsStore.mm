#include "macos/UserDefaultsSettingsStore.h"

#import <Foundation/Foundation.h>

#include <algorithm>

#include "macos/ObjectValues.h"

namespace zd::mac {

namespace {

// The system refuses a suite named after the program's own bundle: there, the standard
// defaults are that domain.
NSUserDefaults* defaultsOf(const std::string& domain) {
    NSString* name = stringOf(domain);
    if ([name isEqualToString:[NSBundle mainBundle].bundleIdentifier])
        return [NSUserDefaults standardUserDefaults];
    return [[NSUserDefaults alloc] initWithSuiteName:name];
}

}  // namespace

UserDefaultsSettingsStore::UserDefaultsSettingsStore(std::string domain)
    : domain_(std::move(domain)) {}

std::optional<Value> UserDefaultsSettingsStore::objectForKey(const std::string& key) const {
    @autoreleasepool {
        id object = [defaultsOf(domain_) objectForKey:stringOf(key)];
        if (object == nil)
            return std::nullopt;
        return valueOf(object);
    }
}

void UserDefaultsSettingsStore::setObject(const Value& value, const std::string& key) {
    @autoreleasepool {
        id object = objectOf(value);
        if (object == nil)
            [defaultsOf(domain_) removeObjectForKey:stringOf(key)];
        else
            [defaultsOf(domain_) setObject:object forKey:stringOf(key)];
    }
}

void UserDefaultsSettingsStore::removeObjectForKey(const std::string& key) {
    @autoreleasepool {
        [defaultsOf(domain_) removeObjectForKey:stringOf(key)];
    }
}

std::vector<std::string> UserDefaultsSettingsStore::allKeys() const {
    @autoreleasepool {
        std::vector<std::string> keys;
        // Only this domain's own keys, not the global domain's that reads also see.
        NSDictionary* stored = [defaultsOf(domain_) persistentDomainForName:stringOf(domain_)];
        for (id key in stored) {
            if ([key isKindOfClass:[NSString class]])
                keys.push_back(textOf(static_cast<NSString*>(key)));
        }
        std::sort(keys.begin(), keys.end());
        return keys;
    }
}

}  // namespace zd::mac
