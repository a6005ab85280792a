#include "testing/InMemorySettingsStore.h"

namespace zd {

std::optional<Value> InMemorySettingsStore::objectForKey(const std::string& key) const {
    auto it = values_.find(key);
    if (it == values_.end())
        return std::nullopt;
    return it->second;
}

void InMemorySettingsStore::setObject(const Value& value, const std::string& key) {
    values_[key] = value;
    ++writeCount_;
}

void InMemorySettingsStore::removeObjectForKey(const std::string& key) {
    values_.erase(key);
    ++writeCount_;
}

std::vector<std::string> InMemorySettingsStore::allKeys() const {
    std::vector<std::string> keys;
    for (const auto& [key, value] : values_)
        keys.push_back(key);
    return keys;
}

}  // namespace zd
