#pragma once
// A settings store that lives in memory, for tests: starts empty or from given values, and
// counts writes so a test can tell that a read wrote nothing.

#include <map>
#include <string>

#include "env/SettingsStore.h"

namespace zd {

class InMemorySettingsStore : public SettingsStore {
  public:
    InMemorySettingsStore() = default;
    explicit InMemorySettingsStore(std::map<std::string, Value> values)
        : values_(std::move(values)) {}

    std::optional<Value> objectForKey(const std::string& key) const override {
        auto it = values_.find(key);
        return it == values_.end() ? std::nullopt : std::optional(it->second);
    }
    void setObject(const Value& value, const std::string& key) override {
        values_[key] = value;
        ++writeCount_;
    }
    void removeObjectForKey(const std::string& key) override {
        values_.erase(key);
        ++writeCount_;
    }
    std::vector<std::string> allKeys() const override {
        std::vector<std::string> keys;
        for (const auto& entry : values_)
            keys.push_back(entry.first);
        return keys;
    }

    const std::map<std::string, Value>& values() const { return values_; }
    int writeCount() const { return writeCount_; }

  private:
    std::map<std::string, Value> values_;
    int writeCount_ = 0;
};

}  // namespace zd
