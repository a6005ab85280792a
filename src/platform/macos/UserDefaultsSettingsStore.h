#pragma once
// The settings in a user's defaults domain (NSUserDefaults), each value in its own
// property-list type: text, boolean, integer, list of text. The application and the command
// line both keep theirs in the application's domain (its bundle identifier).

#include <string>

#include "env/SettingsStore.h"

namespace zd::mac {

class UserDefaultsSettingsStore : public SettingsStore {
  public:
    // The domain `domain` (a bundle identifier): the standard defaults in the program whose
    // bundle it is, a suite of that name in any other (the command line, tests).
    explicit UserDefaultsSettingsStore(std::string domain);

    std::optional<Value> objectForKey(const std::string& key) const override;
    void setObject(const Value& value, const std::string& key) override;
    void removeObjectForKey(const std::string& key) override;
    std::vector<std::string> allKeys() const override;

  private:
    std::string domain_;
};

}  // namespace zd::mac
