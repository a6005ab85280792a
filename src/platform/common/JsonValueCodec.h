#pragma once
// JSON text for the core's loosely typed values, as the settings file keeps them. Types survive
// a round trip: an integer is written without a point and a floating-point number always with
// one (or an exponent), so 3 and 3.0 read back as what they were. Reading is defensive: any
// malformed text, nesting deeper than a fixed limit or trailing garbage gives nothing.

#include <optional>
#include <string>
#include <string_view>

#include "model/Value.h"

namespace zd::JsonValueCodec {

// Pretty-printed with two-space indents and keys in ascending order, ending in a newline.
// Non-finite numbers, which JSON can't hold, are written as null.
std::string encode(const Value& value);

std::optional<Value> decode(std::string_view text);

}  // namespace zd::JsonValueCodec
