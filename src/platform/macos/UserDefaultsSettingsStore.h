#pragma once
// The settings in the user's defaults domain of this application (NSUserDefaults), each value
// in its own property-list type: text, boolean, integer, list of text.

#include <string>

#include "env/SettingsStore.h"

namespace zd::mac {

class UserDefaultsSettingsStore : public SettingsStore {
  public:
    // `suiteName` empty: the application's own domain; otherwise that named domain (tests,
    // a settings file chosen on the command line).
    explicit UserDefaultsSettingsStore(std::string suiteName = {});

    std::optional<Value> objectForKey(const std::string& key) const override;
    void setObject(const Value& value, const std::string& key) override;
    void removeObjectForKey(const std::string& key) override;
    std::vector<std::string> allKeys() const override;

  private:
    std::string suiteName_;
};

}  // namespace zd::mac
