#pragma once
// Numbers of property lists (window records, desktop dictionaries, stored settings) arrive as
// one object type whose encoding tells booleans, integers and fractions apart. The encoding
// is the Objective-C type code of the stored value ("c" or "B" for a boolean, "q", "i", "s",
// "l" and their unsigned forms for integers, "f" and "d" for fractions).

#include <cstdint>

#include "model/Value.h"

namespace zd::mac {

enum class NumberKind { boolean, integer, fraction };

// `isBooleanObject` is the system's own answer to "is this the shared true or false object",
// which wins over the type code: a boolean stored by another program may carry the code "c".
NumberKind numberKindOf(const char* objCType, bool isBooleanObject);

// The value for a number of that kind, given its readings as each type.
Value valueOfNumber(NumberKind kind, bool asBool, std::int64_t asInteger, std::uint64_t asUnsigned,
                    double asDouble, const char* objCType);

}  // namespace zd::mac
