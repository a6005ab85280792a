#pragma once
// A loosely typed value as platforms hand them over: window records, desktop dictionaries,
// stored settings. The rules that read them (which key, which type, what fallback) live in
// the core, so a value of the wrong type is something the core sees and decides about.

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace zd {

class Value;
using ValueArray = std::vector<Value>;
using ValueDictionary = std::map<std::string, Value>;

class Value {
public:
    using Storage = std::variant<std::monostate, bool, std::int64_t, double, std::string, ValueArray,
                                 ValueDictionary>;

    Value() = default;
    Value(bool b) : v_(b) {}                                       // NOLINT(google-explicit-constructor)
    Value(int i) : v_(static_cast<std::int64_t>(i)) {}             // NOLINT(google-explicit-constructor)
    Value(unsigned i) : v_(static_cast<std::int64_t>(i)) {}        // NOLINT(google-explicit-constructor)
    Value(std::int64_t i) : v_(i) {}                               // NOLINT(google-explicit-constructor)
    Value(std::uint64_t i) : v_(static_cast<std::int64_t>(i)) {}   // NOLINT(google-explicit-constructor)
    Value(double d) : v_(d) {}                                     // NOLINT(google-explicit-constructor)
    Value(const char* s) : v_(std::string(s)) {}                   // NOLINT(google-explicit-constructor)
    Value(std::string s) : v_(std::move(s)) {}                     // NOLINT(google-explicit-constructor)
    Value(ValueArray a) : v_(std::move(a)) {}                      // NOLINT(google-explicit-constructor)
    Value(ValueDictionary d) : v_(std::move(d)) {}                 // NOLINT(google-explicit-constructor)

    bool isNull() const { return std::holds_alternative<std::monostate>(v_); }
    bool isBool() const { return std::holds_alternative<bool>(v_); }
    bool isInteger() const { return std::holds_alternative<std::int64_t>(v_); }
    bool isDouble() const { return std::holds_alternative<double>(v_); }
    bool isNumber() const { return isInteger() || isDouble(); }
    bool isString() const { return std::holds_alternative<std::string>(v_); }
    bool isArray() const { return std::holds_alternative<ValueArray>(v_); }
    bool isDictionary() const { return std::holds_alternative<ValueDictionary>(v_); }

    // Typed reads: nothing when the value holds another type. No conversion between types.
    std::optional<bool> asBool() const {
        if (auto* b = std::get_if<bool>(&v_)) return *b;
        return std::nullopt;
    }
    std::optional<std::int64_t> asInteger() const {
        if (auto* i = std::get_if<std::int64_t>(&v_)) return *i;
        return std::nullopt;
    }
    // A number of either kind as a double.
    std::optional<double> asNumber() const {
        if (auto* i = std::get_if<std::int64_t>(&v_)) return static_cast<double>(*i);
        if (auto* d = std::get_if<double>(&v_)) return *d;
        return std::nullopt;
    }
    const std::string* asString() const { return std::get_if<std::string>(&v_); }
    const ValueArray* asArray() const { return std::get_if<ValueArray>(&v_); }
    const ValueDictionary* asDictionary() const { return std::get_if<ValueDictionary>(&v_); }

    // Member of a dictionary value; nothing when this is no dictionary or the key is absent.
    const Value* find(const std::string& key) const {
        const auto* d = asDictionary();
        if (!d) return nullptr;
        auto it = d->find(key);
        return it == d->end() ? nullptr : &it->second;
    }

    const Storage& storage() const { return v_; }
    friend bool operator==(const Value& a, const Value& b) { return a.v_ == b.v_; }

private:
    Storage v_;
};

}  // namespace zd
