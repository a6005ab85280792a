#include "macos/PropertyListNumber.h"

#include <cstring>
#include <limits>

namespace zd::mac {

NumberKind numberKindOf(const char* objCType, bool isBooleanObject) {
    if (isBooleanObject)
        return NumberKind::boolean;
    if (objCType == nullptr || objCType[0] == '\0' || objCType[1] != '\0')
        return NumberKind::fraction;
    switch (objCType[0]) {
        case 'B':
            return NumberKind::boolean;
        case 'c':
        case 'C':
        case 's':
        case 'S':
        case 'i':
        case 'I':
        case 'l':
        case 'L':
        case 'q':
        case 'Q':
            return NumberKind::integer;
        default:
            return NumberKind::fraction;
    }
}

Value valueOfNumber(NumberKind kind, bool asBool, std::int64_t asInteger, std::uint64_t asUnsigned,
                    double asDouble, const char* objCType) {
    switch (kind) {
        case NumberKind::boolean:
            return Value(asBool);
        case NumberKind::integer: {
            // Unsigned 64-bit ids (desktops) above the signed range keep their bits.
            const bool isUnsigned = objCType != nullptr && std::strcmp(objCType, "Q") == 0;
            if (isUnsigned &&
                asUnsigned > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()))
                return Value(asUnsigned);
            return Value(asInteger);
        }
        case NumberKind::fraction:
            break;
    }
    return Value(asDouble);
}

}  // namespace zd::mac
