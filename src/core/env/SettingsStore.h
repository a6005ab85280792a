#pragma once
// The persistent store of the main window's settings: typed values by key, read and written
// one key at a time. Every read goes to the store and every write goes straight to it; which
// key holds what, and what a missing or mistyped value falls back to, is decided by
// `Preferences`, not here. A failed write goes unnoticed by the caller.

#include <charconv>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "model/Value.h"

namespace zd {

class SettingsStore {
  public:
    virtual ~SettingsStore() = default;

    // The stored value of any type; nothing when the key is absent.
    virtual std::optional<Value> objectForKey(const std::string& key) const = 0;
    // Stores a value of any type under the key, replacing what was there.
    virtual void setObject(const Value& value, const std::string& key) = 0;
    // Removes the key; nothing happens if it is absent.
    virtual void removeObjectForKey(const std::string& key) = 0;
    // The keys that hold a value, in ascending order.
    virtual std::vector<std::string> allKeys() const = 0;

    // A text value. A stored number also reads as text (its decimal form, a boolean as "1" or
    // "0"), as the platform's defaults do; any other type reads as nothing.
    std::optional<std::string> stringForKey(const std::string& key) const {
        auto value = objectForKey(key);
        if (!value)
            return std::nullopt;
        if (const auto* text = value->asString())
            return *text;
        if (auto flag = value->asBool())
            return std::string(*flag ? "1" : "0");
        if (auto integer = value->asInteger())
            return std::to_string(*integer);
        if (value->isDouble()) {
            char buffer[32];
            auto end = std::to_chars(buffer, buffer + sizeof buffer, *value->asNumber()).ptr;
            return std::string(buffer, end);
        }
        return std::nullopt;
    }
    // A list value of any element types; nothing when the value is no list.
    std::optional<ValueArray> arrayForKey(const std::string& key) const {
        auto value = objectForKey(key);
        if (!value || !value->isArray())
            return std::nullopt;
        return *value->asArray();
    }

    void setInteger(std::int64_t value, const std::string& key) { setObject(Value(value), key); }
    void setBool(bool value, const std::string& key) { setObject(Value(value), key); }
};

}  // namespace zd
