#include "capture/WindowRecord.h"

#include <limits>

#include "env/WindowListBackend.h"

namespace zd::WindowRecord {

std::optional<std::int64_t> layer(const Value& record) {
    const Value* v = record.find(WindowKey::layer);
    return v ? v->asInteger() : std::nullopt;
}

std::optional<std::int32_t> ownerPID(const Value& record) {
    const Value* v = record.find(WindowKey::ownerPID);
    auto pid = v ? v->asInteger() : std::nullopt;
    if (!pid || *pid < std::numeric_limits<std::int32_t>::min() ||
        *pid > std::numeric_limits<std::int32_t>::max()) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(*pid);
}

std::optional<std::string> ownerName(const Value& record) {
    const Value* v = record.find(WindowKey::ownerName);
    const std::string* s = v ? v->asString() : nullptr;
    return s ? std::optional<std::string>(*s) : std::nullopt;
}

std::optional<std::uint32_t> number(const Value& record) {
    const Value* v = record.find(WindowKey::number);
    auto n = v ? v->asInteger() : std::nullopt;
    if (!n || *n < 0 || *n > std::numeric_limits<std::uint32_t>::max())
        return std::nullopt;
    return static_cast<std::uint32_t>(*n);
}

std::string name(const Value& record) {
    const Value* v = record.find(WindowKey::name);
    const std::string* s = v ? v->asString() : nullptr;
    return s ? *s : std::string();
}

BoundsSize boundsSize(const Value& record) {
    BoundsSize result;
    const Value* v = record.find(WindowKey::bounds);
    const ValueDictionary* dict = v ? v->asDictionary() : nullptr;
    if (!dict)
        return result;
    for (const auto& [key, member] : *dict) {
        if (!member.isNumber())
            return result;
    }
    result.readable = true;
    if (auto it = dict->find("Width"); it != dict->end())
        result.width = it->second.asNumber();
    if (auto it = dict->find("Height"); it != dict->end())
        result.height = it->second.asNumber();
    return result;
}

bool passesSize(const Value& record, double minWidth, double minHeight) {
    auto size = boundsSize(record);
    if (!size.readable)
        return true;
    return size.width && size.height && *size.width >= minWidth && *size.height >= minHeight;
}

}  // namespace zd::WindowRecord
